#include "oxSuperAPI/reference/odbc_string.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

#include "oxSuperAPI/reference/db_statement.h"

namespace oxSuperAPI {

namespace {

struct TPart {
  std::string_view Name;
  std::string_view Value;  ///< as written, braces included
};

std::string_view Trimmed(std::string_view Text) {
  while (!Text.empty() && static_cast<unsigned char>(Text.front()) <= ' ') Text.remove_prefix(1);
  while (!Text.empty() && static_cast<unsigned char>(Text.back()) <= ' ') Text.remove_suffix(1);
  return Text;
}

// Where the value that begins at `Start` ends: at a semicolon, but not at one in braces. "}}" in braces is a brace.
std::size_t EndOfValue(std::string_view Text, std::size_t Start) {
  std::size_t At = std::min(Text.find_first_not_of(" \t", Start), Text.size());
  if (At < Text.size() && Text[At] == '{') {
    for (++At; At < Text.size(); ++At) {
      if (Text[At] != '}') continue;
      if (At + 1 == Text.size() || Text[At + 1] != '}') break;
      ++At;
    }
  }
  return std::min(Text.find(';', std::min(At, Text.size())), Text.size());
}

std::vector<TPart> Parts(std::string_view Text) {
  std::vector<TPart> Result;
  for (std::size_t At = 0; At < Text.size();) {
    const std::size_t Equals = std::min(Text.find_first_of("=;", At), Text.size());
    const bool Pair = Equals < Text.size() && Text[Equals] == '=';
    const std::size_t End = Pair ? EndOfValue(Text, Equals + 1) : Equals;
    const std::string_view Name = Trimmed(Text.substr(At, Equals - At));
    if (!Name.empty() || Pair) Result.push_back({Name, Pair ? Trimmed(Text.substr(Equals + 1, End - Equals - 1)) : ""});
    At = End + 1;
  }
  return Result;
}

// What may be shown. Anything else, above all a piece of a password that should have stood in braces, may not.
constexpr std::array<std::string_view, 24> Harmless = {"driver",
                                                       "dsn",
                                                       "server",
                                                       "servername",
                                                       "address",
                                                       "addr",
                                                       "port",
                                                       "database",
                                                       "uid",
                                                       "tds_version",
                                                       "encrypt",
                                                       "encryption",
                                                       "clientcharset",
                                                       "trusted_connection",
                                                       "trustservercertificate",
                                                       "app",
                                                       "wsid",
                                                       "language",
                                                       "timeout",
                                                       "hostnameincertificate",
                                                       "syncpragma",
                                                       "journalmode",
                                                       "fksupport",
                                                       "checkhostname"};

bool IsPassword(std::string_view Name) {
  return SameName(Name, "PWD") || SameName(Name, "Password");
}

std::string_view Find(const std::vector<TPart>& Found, std::initializer_list<std::string_view> Names) {
  for (const TPart& Part : Found)
    for (const std::string_view Name : Names)
      if (SameName(Part.Name, Name)) return Part.Value;
  return {};
}

}  // namespace

std::string ODBCPassword(std::string_view ConnectionString) {
  std::string_view Written = Find(Parts(ConnectionString), {"PWD", "Password"});
  if (!Written.starts_with('{') || !Written.ends_with('}') || Written.size() < 2) return std::string(Written);
  Written = Written.substr(1, Written.size() - 2);
  std::string Password;
  for (std::size_t At = 0; At < Written.size(); ++At) {
    Password += Written[At];
    if (Written.substr(At, 2) == "}}") ++At;
  }
  return Password;
}

std::string WithODBCPassword(const std::string& ConnectionString, std::string_view Password) {
  // Braces only where there is no way without: drivers disagree on how a brace inside of them is written.
  const bool Plain = Password.find(';') == std::string_view::npos && !Password.starts_with('{') &&
                     Trimmed(Password).size() == Password.size();
  std::string Result(Trimmed(ConnectionString));
  if (!Result.empty() && !Result.ends_with(';')) Result += ';';
  Result += "PWD=";
  if (Plain) return Result.append(Password).append(";");
  Result += '{';
  for (const char Character : Password) Result.append(Character == '}' ? 2 : 1, Character);
  return Result + "};";
}

std::string ShownODBCString(std::string_view ConnectionString) {
  std::string Shown;
  for (const auto& [Name, Value] : Parts(ConnectionString)) {
    const bool Known = std::ranges::any_of(Harmless, [&](std::string_view Other) { return SameName(Name, Other); });
    if (!Shown.empty()) Shown += ';';
    if (Known || IsPassword(Name)) Shown.append(Name).append("=");
    Shown += Known ? Value : "(hidden)";
  }
  return Shown;
}

std::string DescribeODBCDatabase(std::string_view ConnectionString) {
  const std::vector<TPart> Found = Parts(ConnectionString);
  const std::string_view Database = Find(Found, {"Database"});
  const std::string_view Server = Find(Found, {"Server", "Servername", "Address", "Addr", "DSN"});
  std::string Text(Database.empty() ? "(the user's default)" : Database);
  if (!Server.empty()) Text.append(" on ").append(Server);
  return Text;
}

}  // namespace oxSuperAPI
