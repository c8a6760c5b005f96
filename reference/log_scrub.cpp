#include "oxSuperAPI/reference/log_scrub.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <array>
#include <utility>

#include "oxSuperAPI/reference/db_error.h"

namespace oxSuperAPI {

namespace {

constexpr std::array<const char*, 5> MaskedColumns = {"cURL", "cRequestHeader", "cRequestBody", "cResponse",
                                                      "cLogDetails"};

struct TClose {
  void operator()(sqlite3* Database) const { sqlite3_close_v2(Database); }
};

/// The changes that the row needs, as an update; without text when it needs none.
TDBStatement UpdateOf(const TDBRows& Row, std::int32_t Id, TLogMasker& Masker) {
  TDBStatement Update;
  for (const char* Column : MaskedColumns) {
    const std::string Text = Row.FieldAsString(Column);
    std::string Masked = Masker.Mask(Text);
    if (Masked == Text) continue;
    Update.SQL +=
        fmt::format("{} {} = :{}", Update.SQL.empty() ? "update _iptblBeamSuperLog set" : ",", Column, Column);
    Update.Parameters.push_back({Column, std::move(Masked)});
  }
  if (Update.SQL.empty()) return Update;
  Update.SQL += " where idBeamSuperLog = :Id";
  Update.Parameters.push_back({"Id", Id});
  return Update;
}

}  // namespace

std::size_t ScrubCallLog(TDBConnection& Connection, const std::vector<std::int32_t>& Rows, TLogMasking Masking,
                         std::shared_ptr<TKnownSecrets> Known, bool DryRun) {
  if (!Known) Known = std::make_shared<TKnownSecrets>();
  std::size_t Changed = 0;
  const auto Scrub = [&] {
    for (const std::int32_t Id : Rows) {
      const auto Row =
          Connection.OpenRows({"select cURL, cRequestHeader, cRequestBody, cResponse, cLogDetails from "
                               "_iptblBeamSuperLog where idBeamSuperLog = :Id",
                               {{"Id", Id}}});
      if (Row->Eof()) continue;
      TLogMasker Masker(Masking, Known);
      const TDBStatement Update = UpdateOf(*Row, Id, Masker);
      if (Update.SQL.empty()) continue;
      ++Changed;
      if (!DryRun) Connection.Execute(Update);
    }
  };
  if (DryRun)
    Scrub();
  else
    Connection.InTransaction(Scrub);
  return Changed;
}

void EraseRemains(TDBConnection& Connection) {
  if (Connection.Dialect() != TSQLDialect::SQLite) return;
  const auto Main = Connection.OpenRows({"select file from pragma_database_list where seq = 0", {}});
  const std::string FileName = Main->Eof() ? "" : Main->FieldAsString("file");
  if (FileName.empty()) return;  // in memory
  sqlite3* Opened = nullptr;
  int Code = sqlite3_open_v2(FileName.c_str(), &Opened, SQLITE_OPEN_READWRITE, nullptr);
  const std::unique_ptr<sqlite3, TClose> Database(Opened);
  if (Code == SQLITE_OK) {
    sqlite3_busy_timeout(Opened, 5000);
    Code = sqlite3_exec(Opened, "vacuum", nullptr, nullptr, nullptr);
  }
  if (Code == SQLITE_OK)
    Code = sqlite3_wal_checkpoint_v2(Opened, nullptr, SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
  if (Code != SQLITE_OK)
    throw TDatabaseError(
        fmt::format("What rows held before may still stand in {}: SQLite error {} ({}). Close the other programs that "
                    "use it and repeat this",
                    FileName, Code, sqlite3_errstr(Code)),
        Code);
}

}  // namespace oxSuperAPI
