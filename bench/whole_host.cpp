#include "whole_host.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <stdexcept>

#include "oxSuperAPI/foundation/uBeamEnumerations.h"
#include "oxSuperAPI/reference/db_sqlite.h"
#include "oxSuperAPI/session/uBeamSuperGlobal.h"

namespace bench {

namespace {

constexpr const char* Columns[] = {"cSource",      "cURL",      "cMethod",     "cRequestHeader",
                                   "cRequestBody", "cResponse", "cLogDetails", "cStatus"};

void Need(bool Condition, const char* What) {
  if (!Condition) throw std::runtime_error(What);
}

}  // namespace

TTemporaryDirectory::TTemporaryDirectory(const std::filesystem::path& Parent) {
  std::string Pattern = (Parent / "bench_XXXXXX").string();
  Need(mkdtemp(Pattern.data()) != nullptr, "no temporary directory");
  Path = Pattern;
}
TTemporaryDirectory::~TTemporaryDirectory() {
  std::error_code Ignored;
  std::filesystem::remove_all(Path, Ignored);
}

TWholeHost::TWholeHost(const std::filesystem::path& Parent, const char* Masking)
    : Directory(Parent), Name(OXSUPERAPI_API_HOST_PROD) {
  using namespace oxSuperAPI;
  Service = std::make_unique<TLocalService>(Name, CAFile);
  TReferenceConfig Config;
  Config.identity.agent = 7;
  Config.files.common_database = Directory.Path / "common.db";
  Config.files.payroll_database = Directory.Path / "payroll.db";
  Config.files.key = Directory.Path / "cipher.key";
  Config.files.secrets = Directory.Path / "secrets.toml";
  Config.files.log = Directory.Path / "host.log";
  Config.http.ca_file = CAFile;
  Config.http.connect_to[Name + ":443"] = "127.0.0.1:" + std::to_string(Service->Port());
  if (Masking) Config.log.masking = Masking;
  CreateHostFiles(Config.files);
  Host = std::make_unique<TReferenceHost>(Config);
  RegisterHost(Host.get());
  TBeamSuperCredentials& Customer = TBeamSuperGlobal::BeamSuperCredentials();
  Customer.UUID = "0f8fad5b-d9cb-469f-a165-70867728950e";
  Customer.ClientID = "a-client";
  Customer.ClientSecret = "a-secret";
  Customer.DateLastIssued = Now();
  Customer.Save();
}

TWholeHost::~TWholeHost() {
  oxSuperAPI::TBeamSuperGlobal::Finalize();
  oxSuperAPI::RegisterHost(nullptr);
}

TPreparedInsert::TPreparedInsert(const std::filesystem::path& FileName) {
  oxSuperAPI::TSQLiteConnection::CreateFile(FileName.string());
  {
    oxSuperAPI::TSQLiteConnection Connection(FileName.string());
    CreateSchema(Connection, oxSuperAPI::TDatabaseRole::Payroll);
  }
  sqlite3* Database = nullptr;
  Need(sqlite3_open(FileName.c_str(), &Database) == SQLITE_OK, "SQLite");
  FDatabase.reset(Database);
  Need(sqlite3_exec(Database, "pragma journal_mode = wal; pragma synchronous = full", nullptr, nullptr, nullptr) ==
           SQLITE_OK,
       "pragma");
  sqlite3_stmt* Statement = nullptr;
  Need(sqlite3_prepare_v2(Database,
                          "insert into _iptblBeamSuperLog (cSource, cURL, cMethod, iAgentID, cRequestHeader, "
                          "cRequestBody, cResponse, cLogDetails, cStatus) values (?, ?, ?, 7, ?, ?, ?, ?, ?)",
                          -1, &Statement, nullptr) == SQLITE_OK,
       "prepare");
  FStatement.reset(Statement);
}

void TPreparedInsert::Insert(const TLogRow& Row) {
  for (std::size_t Index = 0; Index < Row.size(); ++Index)
    sqlite3_bind_text64(FStatement.get(), static_cast<int>(Index) + 1, Row[Index].data(), Row[Index].size(),
                        SQLITE_STATIC, SQLITE_UTF8);
  Need(sqlite3_step(FStatement.get()) == SQLITE_DONE, "insert");
  sqlite3_reset(FStatement.get());
}

TLogRow LastLogRow(oxSuperAPI::TReferenceHost& Host) {
  const auto Found = Host.ADOMainConnection()->Open(
      {"select * from _iptblBeamSuperLog where idBeamSuperLog = (select max(idBeamSuperLog) from _iptblBeamSuperLog)",
       {}});
  Need(!Found->Eof(), "no log row was written");
  TLogRow Row;
  for (std::size_t Index = 0; Index < Row.size(); ++Index) Row[Index] = Found->FieldAsString(Columns[Index]);
  return Row;
}

std::vector<double> TakeTurns(int Rounds, const std::vector<std::function<void()>>& Works) {
  using TClock = std::chrono::steady_clock;
  std::vector<std::vector<double>> Seconds(Works.size());
  for (int Round = 0; Round < Rounds; ++Round)
    for (std::size_t Work = 0; Work < Works.size(); ++Work) {
      const auto Start = TClock::now();
      Works[Work]();
      Seconds[Work].push_back(std::chrono::duration<double>(TClock::now() - Start).count());
    }
  std::vector<double> Medians;
  for (std::vector<double>& One : Seconds) {
    const auto Middle = One.begin() + static_cast<std::ptrdiff_t>(One.size() / 2);
    std::nth_element(One.begin(), Middle, One.end());
    Medians.push_back(*Middle);
  }
  return Medians;
}

}  // namespace bench
