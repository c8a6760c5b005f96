#pragma once

#include <string>
#include <string_view>

#include "oxSuperAPI/host/uBeamError.h"

namespace oxSuperAPI {

// ODBC connection strings: "Driver=FreeTDS;Server=db1;UID=payroll;PWD={a;b}". Names are compared without regard to
// letter case, values in braces may hold semicolons.

/// The password in the string; "" when there is none.
OXSUPERAPI_EXPORT std::string ODBCPassword(std::string_view ConnectionString);

/// The string with this password added.
OXSUPERAPI_EXPORT std::string WithODBCPassword(const std::string& ConnectionString, std::string_view Password);

/// The string for display: what may be a secret is replaced by "(hidden)".
OXSUPERAPI_EXPORT std::string ShownODBCString(std::string_view ConnectionString);

/// Which database it leads to, for an error text: "payroll on db1".
OXSUPERAPI_EXPORT std::string DescribeODBCDatabase(std::string_view ConnectionString);

}  // namespace oxSuperAPI
