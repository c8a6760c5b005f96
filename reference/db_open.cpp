#include "oxSuperAPI/reference/db_open.h"

#include <utility>

#include "oxSuperAPI/reference/db_sqlite.h"
#include "oxSuperAPI/reference/odbc_string.h"
#include "oxSuperAPI/reference/private_file.h"

namespace oxSuperAPI {

namespace {

constexpr std::string_view SQLite = "sqlite:", ODBC = "odbc:";

}  // namespace

std::optional<std::filesystem::path> SQLiteFile(const std::string& Address) {
  if (Address.starts_with(ODBC)) return std::nullopt;
  return Address.starts_with(SQLite) ? Address.substr(SQLite.size()) : Address;
}

std::optional<std::string> ODBCString(const std::string& Address) {
  if (!Address.starts_with(ODBC)) return std::nullopt;
  return Address.substr(ODBC.size());
}

std::string AddressFrom(const std::filesystem::path& Directory, const std::string& Address) {
  const auto File = SQLiteFile(Address);
  if (!File || File->empty()) return Address;
  const std::string_view Scheme = Address.starts_with(SQLite) ? SQLite : "";
  return std::string(Scheme) + (Directory / *File).lexically_normal().string();
}

bool HoldsPassword(const std::string& Address) {
  const auto ConnectionString = ODBCString(Address);
  return ConnectionString && !ODBCPassword(*ConnectionString).empty();
}

std::string ShownAddress(const std::string& Address) {
  const auto ConnectionString = ODBCString(Address);
  return ConnectionString ? std::string(ODBC) + ShownODBCString(*ConnectionString) : Address;
}

void CreateDatabaseFile(const std::string& Address) {
  const auto File = SQLiteFile(Address);
  if (File && !PathExists(File->string())) TSQLiteConnection::CreateFile(File->string());
}

std::unique_ptr<TDBConnection> OpenDatabase(const std::string& Address, TODBCOptions Options,
                                            const std::string& Password) {
  if (const auto File = SQLiteFile(Address)) return std::make_unique<TSQLiteConnection>(File->string());
  std::string ConnectionString = *ODBCString(Address);
  if (!Password.empty() && ODBCPassword(ConnectionString).empty())
    ConnectionString = WithODBCPassword(ConnectionString, Password);
  return std::make_unique<TODBCConnection>(std::move(ConnectionString), Options);
}

}  // namespace oxSuperAPI
