#include "oxSuperAPI/reference/odbc_error.h"

#include <fmt/format.h>

#include <algorithm>

#include "oxSuperAPI/reference/db_error.h"
#include "oxSuperAPI/reference/utf16.h"

namespace oxSuperAPI {

namespace {

struct TMeaning {
  int Code;
  const char* Text;
  bool NamesOnly = false;  ///< the server's own text names tables, columns, users; no content
};

// Errors of SQL Server that need another word than their number. Its texts quote the key of a second row with the same
// key, the text that is too long, the value that cannot be converted: those are never shown.
constexpr TMeaning Meanings[] = {
    {207, "no such column: run \"oxsuper db check\"", true},
    {208, "no such table: run \"oxsuper db check\"", true},
    {229, "the user lacks a right: docs/sqlserver.md lists those that are needed", true},
    {230, "the user lacks a right: docs/sqlserver.md lists those that are needed", true},
    {262, "the user lacks a right: docs/sqlserver.md lists those that are needed", true},
    {334, "the table has triggers: docs/sqlserver.md says what to do", true},
    {515, "a column that needs a value has none", true},
    {547, "a check or foreign key refuses the row", true},
    {1205, "another program was in the way (deadlock): try again"},
    {1222, "another program holds the row: try again"},
    {2601, "a row with this key exists already"},
    {2627, "a row with this key exists already"},
    {2628, "a text is longer than its column: run \"oxsuper db check\""},
    {8152, "a text is longer than its column: run \"oxsuper db check\""},
    {4060, "the database does not exist, or the user may not open it", true},
    {18456, "user or password is wrong", true},
    {18452, "the server does not accept this kind of login", true},
};

constexpr int SQLiteBusy = 5, SQLiteLocked = 6;

// What the driver manager and drivers say of themselves, by the beginning of the SQLSTATE.
constexpr std::pair<std::string_view, const char*> States[] = {
    {"HYT", "the server did not answer in time"},
    {"IM002", "no such driver or data source: \"odbcinst -q -d\" lists the drivers"},
    {"IM003", "the driver cannot be loaded: \"odbcinst -q -d\" lists the drivers"},
    {"01000", "the driver cannot be loaded: \"odbcinst -q -d\" lists the drivers"},
    {"28", "user or password is wrong"},
    {"08", "the server cannot be reached"},
    {"40001", "another program was in the way (deadlock): try again"},
    {"23", "a row with this key exists already, or a rule of the table refuses it"},
    {"22", "a value does not fit its column"},
    {"42S02", "no such table: run \"oxsuper db check\""},
    {"42S22", "no such column: run \"oxsuper db check\""},
};

// Without the "[Driver][Server]" in front.
std::string_view Bare(std::string_view Text) {
  while (Text.starts_with('[')) {
    const std::size_t Close = Text.find(']');
    if (Close == std::string_view::npos) break;
    Text.remove_prefix(Close + 1);
  }
  return Text;
}

}  // namespace

std::vector<TODBCDiagnostic> ODBCDiagnostics(SQLSMALLINT Kind, SQLHANDLE Handle) {
  constexpr SQLSMALLINT Most = 20;
  std::vector<TODBCDiagnostic> Records;
  for (SQLSMALLINT Number = 1; Number <= Most; ++Number) {
    char16_t State[8] = {}, Text[1024] = {};
    SQLINTEGER Native = 0;
    SQLSMALLINT Length = 0;
    const SQLRETURN Code = SQLGetDiagRecW(Kind, Handle, Number, ODBCText(State), &Native, ODBCText(Text),
                                          static_cast<SQLSMALLINT>(std::size(Text)), &Length);
    if (!SQL_SUCCEEDED(Code)) break;
    State[5] = Text[std::size(Text) - 1] = 0;
    Records.push_back({ToUTF8(State), Native, ToUTF8(Text)});
  }
  return Records;
}

void FailODBC(const std::vector<TODBCDiagnostic>& Records, const TODBCErrorContext& Context) {
  TODBCDiagnostic First{"HY000", 0, ""};
  const auto Found = std::ranges::find_if(Records, [](const auto& Record) { return !Record.IsRemark(); });
  if (!Records.empty()) First = Found != Records.end() ? *Found : Records[0];
  const bool IsServer = Context.Dialect == TSQLDialect::SQLServer;
  const auto Meaning =
      std::ranges::find_if(Meanings, [&](const TMeaning& M) { return IsServer && M.Code == First.Native; });
  const auto State = std::ranges::find_if(States, [&](const auto& S) { return First.State.starts_with(S.first); });
  const bool Known = Meaning != std::end(Meanings);

  std::string Text = fmt::format("ODBC error {} {} in {}", First.State, First.Native, Context.Where);
  if (Context.IsLost && !First.State.starts_with("HYT"))
    Text += ": the connection was lost";
  else if (Known)
    Text += fmt::format(": {}", Meaning->Text);
  else if (Context.Dialect == TSQLDialect::SQLite && (First.Native == SQLiteBusy || First.Native == SQLiteLocked))
    Text += ": another program holds it: try again";
  else if (State != std::end(States))
    Text += fmt::format(": {}", State->second);
  for (const TODBCDiagnostic& Record : Records) {
    // SQLite names tables and columns, and before the connection stands there is no value to quote.
    const bool Harmless = !IsServer || (Known && Meaning->NamesOnly && Record.Native == First.Native);
    const bool HoldsPassword = !Context.Password.empty() && Record.Text.find(Context.Password) != std::string::npos;
    if (Harmless && !HoldsPassword) Text += fmt::format(" ({})", Bare(Record.Text));
  }
  throw TDatabaseError(Text, First.Native, First.State);
}

}  // namespace oxSuperAPI
