#pragma once

#include <sql.h>
#include <sqlext.h>

#include <cstdint>
#include <string>

namespace oxSuperAPI {

// For the ODBC adapter alone; not for hosts.

static_assert(sizeof(SQLWCHAR) == sizeof(char16_t), "unixODBC has to be built for UTF-16");

/// A number in the place of a pointer.
inline SQLPOINTER ODBCNumber(std::uintptr_t Number) {
  return reinterpret_cast<SQLPOINTER>(Number);
}

/// An environment, connection or statement handle of the driver manager.
template <SQLSMALLINT Kind>
class TODBCHandle {
 public:
  /// Makes the handle; it is null when the driver manager refuses.
  explicit TODBCHandle(SQLHANDLE Parent) {
    if (!SQL_SUCCEEDED(SQLAllocHandle(Kind, Parent, &FHandle))) FHandle = SQL_NULL_HANDLE;
    if constexpr (Kind == SQL_HANDLE_ENV) SQLSetEnvAttr(FHandle, SQL_ATTR_ODBC_VERSION, ODBCNumber(SQL_OV_ODBC3), 0);
  }
  TODBCHandle(const TODBCHandle&) = delete;
  TODBCHandle& operator=(const TODBCHandle&) = delete;
  ~TODBCHandle() {
    if (FHandle) SQLFreeHandle(Kind, FHandle);
  }

  /// Borrowed.
  SQLHANDLE get() const { return FHandle; }

 private:
  SQLHANDLE FHandle = SQL_NULL_HANDLE;
};

/// UTF-16 text as the driver manager wants it. @{
inline SQLWCHAR* ODBCText(std::u16string& Text) {
  return reinterpret_cast<SQLWCHAR*>(Text.data());
}
inline SQLWCHAR* ODBCText(char16_t* Text) {
  return reinterpret_cast<SQLWCHAR*>(Text);
}
/// @}

}  // namespace oxSuperAPI
