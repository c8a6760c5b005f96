#include "oxSuperAPI/log/uBeamSuperLog.h"

#include <utility>

#include "oxSuperAPI/foundation/uBeamText.h"
#include "oxSuperAPI/host/uHost.h"
#include "oxSuperAPI/session/uBeamMasking.h"

namespace oxSuperAPI {

namespace {

bool IsBlank(const std::string& Text) {
  return Trim(Text).empty();
}

std::int32_t AgentID() {
  const auto Agent = Host().Identity().CurrentAgent();
  return Agent && *Agent > 0 ? *Agent : -1;
}

std::string Cut(const std::string& Text, std::size_t Count) {
  return std::string(FirstCharacters(Text, Count));
}

}  // namespace

std::int32_t TBeamSuperLog::AddToLog(std::string Source, std::string URL, std::string Method, std::string Headers,
                                     std::string Body, std::string Response, std::string LogDetails,
                                     std::string Status) noexcept {
  try {
    if (!Host().ADOMainConnection()) return 0;
    if (IsBlank(Source) && IsBlank(Headers) && IsBlank(Body) && IsBlank(Response)) return 0;
    const std::int32_t Agent = AgentID();
    TADOConnection* Connection = Host().ADOMainConnection();  // asked for anew: the host may have reconnected
    if (!Connection) return 0;
    // Finds no row: it only gives a result set of the table's columns, into which the new row goes.
    const auto Row = Connection->Open({"select * from dbo._iptblBeamSuperLog where idBeamSuperLog = 0", {}});
    if (!Row) return 0;
    Row->Append();
    Row->SetField("cSource", Cut(Source, 100));
    Row->SetField("cURL", HideCredentials(std::move(URL)));
    Row->SetField("cMethod", HideCredentials(std::move(Method)));
    Row->SetField("iAgentID", Agent);
    Row->SetField("cRequestHeader", HideCredentials(std::move(Headers)));
    Row->SetField("cRequestBody", HideCredentials(std::move(Body)));
    Row->SetField("cResponse", HideCredentials(std::move(Response)));
    Row->SetField("cLogDetails", HideCredentials(std::move(LogDetails)));
    Row->SetField("cStatus", Cut(Status, 3));
    Row->Post();
    return Row->FieldAsInteger("idBeamSuperLog");
  } catch (...) {
    return 0;
  }
}

}  // namespace oxSuperAPI
