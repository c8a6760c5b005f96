#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "oxSuperAPI/reference/db_connection.h"
#include "oxSuperAPI/reference/db_odbc.h"

namespace oxSuperAPI {

// A database's address: "sqlite:FILE", a plain file name, which means the same, or "odbc:CONNECTION STRING".

/// The file of an address that leads to SQLite's own library; none for the others.
OXSUPERAPI_EXPORT std::optional<std::filesystem::path> SQLiteFile(const std::string& Address);

/// The connection string of an address that leads through ODBC; none for the others.
OXSUPERAPI_EXPORT std::optional<std::string> ODBCString(const std::string& Address);

/// The address with a relative file name taken from `Directory`.
OXSUPERAPI_EXPORT std::string AddressFrom(const std::filesystem::path& Directory, const std::string& Address);

/// Whether the address holds a password in clear.
OXSUPERAPI_EXPORT bool HoldsPassword(const std::string& Address);

/// The address for display, without a password.
OXSUPERAPI_EXPORT std::string ShownAddress(const std::string& Address);

/// Makes the file that an address leads to, empty, when it is missing. Nothing is done for other addresses.
OXSUPERAPI_EXPORT void CreateDatabaseFile(const std::string& Address);

/// Opens the database. A file has to exist. `Password` is for a connection string that holds none itself.
OXSUPERAPI_EXPORT std::unique_ptr<TDBConnection> OpenDatabase(const std::string& Address, TODBCOptions Options = {},
                                                              const std::string& Password = {});

}  // namespace oxSuperAPI
