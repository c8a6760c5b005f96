#pragma once

#include <sqlite3.h>

#include <array>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "local_service.h"
#include "oxSuperAPI/reference/reference_host.h"

namespace bench {

/// A directory that is removed with all it holds.
struct TTemporaryDirectory {
  explicit TTemporaryDirectory(const std::filesystem::path& Parent);
  ~TTemporaryDirectory();
  std::filesystem::path Path;
};

/// The reference host with files of its own and the local service, registered, with an activated customer. Its settings
/// are the ones that a host gets that sets none, unless `Masking` names another masking of the call log.
struct TWholeHost {
  explicit TWholeHost(const std::filesystem::path& Parent = std::filesystem::temp_directory_path(),
                      const char* Masking = nullptr);
  ~TWholeHost();

  TTemporaryDirectory Directory;
  std::string Name;  ///< of the service
  std::filesystem::path CAFile = Directory.Path / "ca.pem";
  std::unique_ptr<TLocalService> Service;
  std::unique_ptr<oxSuperAPI::TReferenceHost> Host;
};

/// Where files are in memory: a disk takes so long, and so differently long, to make a row durable that microseconds
/// cannot be seen beside it.
inline const std::filesystem::path MemoryFiles = "/dev/shm";

/// What the masking of the call log, as a host gets it, leaves of the headers of every call here.
inline constexpr const char* MaskedHeaders = "authorization: Bearer (hidden)";

/// A log row's texts, in the order of the columns that AddToLog fills.
using TLogRow = std::array<std::string, 8>;

/// The floor of a log row: an insert into the same table, prepared once, with the same durability, in a database of its
/// own beside the host's.
class TPreparedInsert {
 public:
  explicit TPreparedInsert(const std::filesystem::path& FileName);
  void Insert(const TLogRow& Row);

 private:
  struct TClose {
    void operator()(sqlite3* Database) const { sqlite3_close_v2(Database); }
    void operator()(sqlite3_stmt* Statement) const { sqlite3_finalize(Statement); }
  };
  std::unique_ptr<sqlite3, TClose> FDatabase;
  std::unique_ptr<sqlite3_stmt, TClose> FStatement;
};

/// The columns of a log row as the host's database has them, newest row.
TLogRow LastLogRow(oxSuperAPI::TReferenceHost& Host);

/// Seconds that each of the works took, the median of `Rounds`; they take turns, so that the machine's moods meet all.
std::vector<double> TakeTurns(int Rounds, const std::vector<std::function<void()>>& Works);

}  // namespace bench
