#include "oxSuperAPI/session/uBeamHostAccess.h"

#include "oxSuperAPI/foundation/uBeamText.h"
#include "oxSuperAPI/session/uBeamSuperGlobal.h"

namespace oxSuperAPI {

namespace {

TADOConnection& Present(TADOConnection* Connection, std::string_view Database) {
  if (!Connection) throw TBeamError("The host has no connection to the " + std::string(Database) + " database");
  return *Connection;
}

}  // namespace

std::unique_ptr<TADOQuery> OpenQuery(TADOConnection* Connection, std::string_view Database,
                                     const TDBStatement& Statement) {
  auto Query = Present(Connection, Database).Open(Statement);
  if (!Query) throw TBeamError("The host's " + std::string(Database) + " database gave no result set");
  return Query;
}

void Execute(TADOConnection* Connection, std::string_view Database, const TDBStatement& Statement) {
  Present(Connection, Database).Execute(Statement);
}

std::string EncipheredEnvironment() {
  const TBeamSuperEnvironment Environment = TBeamSuperGlobal::BeamSuperGlobal().GetBeamSuperEnvironment();
  return DefEncrypt(std::string(TBeamSuperEnvironmentString[Environment]));
}

bool IsUKDomain(std::string_view Domain) {
  return SameText(FirstCharacters(Domain, 2), "UK");
}

bool IsHostedDomain(std::string_view Domain) {
  return UpperCase(Domain).find("HOSTEDKESTREL") != std::string::npos;
}

void TryAddToLog(const std::string& Text, TLogSeverity Severity) noexcept {
  try {
    AddToLog(Text, Severity);
  } catch (...) {
  }
}

}  // namespace oxSuperAPI
