#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "oxSuperAPI/host/uHostJson.h"

namespace oxSuperAPI {

/// What is known of a submission. The texts are stored.
namespace JournalOutcome {
inline constexpr const char* Sending = "sending";      ///< written before the request leaves
inline constexpr const char* Accepted = "accepted";    ///< the service has it
inline constexpr const char* Refused = "refused";      ///< the service does not have it
inline constexpr const char* NotSent = "not sent";     ///< it never left
inline constexpr const char* Unknown = "unknown";      ///< it may have arrived
inline constexpr const char* Cancelled = "cancelled";  ///< accepted, and cancelled later
}  // namespace JournalOutcome

/// One submission of one batch.
struct TJournalEntry {
  std::string Time;         ///< local, "yyyy-mm-dd hh:nn"
  std::string Environment;  ///< "Dev", "QA", "Prod"
  std::string File;
  std::string FileDigest;   ///< of the bytes of the file
  std::string FileId;       ///< of the pay-run file, may be empty
  std::string BatchNumber;  ///< its place among the batches of the file, from 1
  std::string BatchDigest;  ///< of the contributions, without message identifier and time
  std::string Sender;       ///< business number
  std::string Total;        ///< dollars
  std::string MessageId;
  std::string Outcome;
  std::string ProcessId;
};

/// What a journal is opened for. Whoever submits keeps others that submit waiting until the journal is destroyed.
enum class TJournalUse : std::uint8_t { Read, Submit };

/// The tool's record of its submissions, one JSON object a line in a file of the owner's alone. It is written, and on
/// the disk, before a submission leaves, so that a file that may have been sent is never sent again unnoticed.
class TJournal {
 public:
  /// Raises TBeamError when the file cannot be read or is damaged.
  TJournal(const std::filesystem::path& Directory, TJSONParser& Parser, TJournalUse Use);
  ~TJournal();
  TJournal(const TJournal&) = delete;
  TJournal& operator=(const TJournal&) = delete;

  /// The last state of each submission, in the order in which they were begun.
  const std::vector<TJournalEntry>& Entries() const { return FEntries; }
  /// A submission of the same file or of the same contributions that the service has or may have, or null.
  const TJournalEntry* FindTwin(const TJournalEntry& Entry) const;
  const TJournalEntry* FindProcess(const std::string& ProcessId) const;

  /// Adds a submission, or a newer state of the one with the same message identifier. On the disk when it returns.
  void Write(const TJournalEntry& Entry);

 private:
  void Read(TJSONParser& Parser, TJournalUse Use);
  void Take(const TJournalEntry& Entry);
  [[noreturn]] void Fail(const char* Verb) const;

  std::string FFileName;
  int FFile = -1;
  std::vector<TJournalEntry> FEntries;
};

/// SHA-256 in hexadecimal digits.
std::string Digest(std::string_view Text);

}  // namespace oxSuperAPI
