#include "journal.h"

#include <fcntl.h>
#include <openssl/evp.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include "oxSuperAPI/reference/private_file.h"

namespace oxSuperAPI {
namespace {

/// Stored names: they may not change.
struct TField {
  const char* Name;
  std::string TJournalEntry::*Member;
};
constexpr std::array<TField, 12> Fields{{{"time", &TJournalEntry::Time},
                                         {"environment", &TJournalEntry::Environment},
                                         {"file", &TJournalEntry::File},
                                         {"fileDigest", &TJournalEntry::FileDigest},
                                         {"fileId", &TJournalEntry::FileId},
                                         {"batch", &TJournalEntry::BatchNumber},
                                         {"batchDigest", &TJournalEntry::BatchDigest},
                                         {"sender", &TJournalEntry::Sender},
                                         {"total", &TJournalEntry::Total},
                                         {"messageId", &TJournalEntry::MessageId},
                                         {"outcome", &TJournalEntry::Outcome},
                                         {"processId", &TJournalEntry::ProcessId}}};

bool MayBeThere(const TJournalEntry& Entry) {
  return Entry.Outcome == JournalOutcome::Sending || Entry.Outcome == JournalOutcome::Accepted ||
         Entry.Outcome == JournalOutcome::Unknown;
}

}  // namespace

TJournal::TJournal(const std::filesystem::path& Directory, TJSONParser& Parser, TJournalUse Use)
    : FFileName((Directory / "submissions.jsonl").string()) {
  if (!PathExists(FFileName)) CreatePrivateFile(FFileName, "journal of submissions", "");
  CheckPrivateFile(FFileName, "journal of submissions");
  FFile = ::open(FFileName.c_str(), O_RDWR | O_APPEND | O_CLOEXEC | O_NOFOLLOW);
  if (FFile < 0) Fail("open");
  try {
    if (Use == TJournalUse::Submit && ::flock(FFile, LOCK_EX) != 0) Fail("lock");
    Read(Parser, Use);
  } catch (...) {
    ::close(FFile);
    throw;
  }
}

TJournal::~TJournal() {
  ::close(FFile);
}

void TJournal::Read(TJSONParser& Parser, TJournalUse Use) {
  constexpr std::size_t MaxBytes = 64u << 20;
  const std::string Text = ReadPrivateFile(FFileName, "journal of submissions", MaxBytes);
  std::size_t Line = 0;
  for (std::size_t Begin = 0; Begin < Text.size();) {
    ++Line;
    const std::size_t End = Text.find('\n', Begin);
    if (End == std::string::npos) {  // the machine stopped while it was written, before anything was sent for it
      if (Use == TJournalUse::Submit && ::ftruncate(FFile, static_cast<off_t>(Begin)) != 0) Fail("repair");
      break;
    }
    const auto Value = Parser.Parse(std::string_view(Text).substr(Begin, End - Begin));
    Begin = End + 1;
    const TJSONObject* Object = Value ? Value->AsObject() : nullptr;
    if (!Object)
      throw TBeamError(FFileName + ":" + std::to_string(Line) +
                       ": the line is damaged; look at it before anything is submitted");
    TJournalEntry Entry;
    for (const TField& Field : Fields) {
      const TJSONValue* Member = Object->Find(Field.Name);
      if (Member && Member->AsString()) Entry.*Field.Member = *Member->AsString();
    }
    Take(Entry);
  }
}

void TJournal::Take(const TJournalEntry& Entry) {
  const auto Found = std::find_if(FEntries.begin(), FEntries.end(),
                                  [&](const TJournalEntry& Each) { return Each.MessageId == Entry.MessageId; });
  if (Found != FEntries.end())
    *Found = Entry;
  else
    FEntries.push_back(Entry);
}

void TJournal::Write(const TJournalEntry& Entry) {
  TJSONObject Object;
  for (const TField& Field : Fields) Object.Append(Field.Name, TJSONValue(Entry.*Field.Member));
  const std::string Text = PrintJSON(Object, TJSONLayout::Compact) + "\n";
  const off_t Before = ::lseek(FFile, 0, SEEK_END);
  const bool Written = ::write(FFile, Text.data(), Text.size()) == static_cast<ssize_t>(Text.size());
  if (!Written || ::fsync(FFile) != 0) {
    const int Reason = errno;
    [[maybe_unused]] const int Ignored = ::ftruncate(FFile, Before);
    errno = Reason;
    Fail("write");
  }
  Take(Entry);
}

void TJournal::Fail(const char* Verb) const {
  throw TBeamError(std::string("Cannot ") + Verb + " " + FFileName + ": " + std::strerror(errno));
}

const TJournalEntry* TJournal::FindTwin(const TJournalEntry& Entry) const {
  const auto Found = std::find_if(FEntries.rbegin(), FEntries.rend(), [&](const TJournalEntry& Each) {
    if (!MayBeThere(Each) || Each.Environment != Entry.Environment) return false;
    const bool SamePlace = Each.BatchNumber == Entry.BatchNumber;
    const bool SameFile = SamePlace && Each.FileDigest == Entry.FileDigest;
    const bool SameFileId =
        SamePlace && !Entry.FileId.empty() && Each.FileId == Entry.FileId && Each.Sender == Entry.Sender;
    return Each.BatchDigest == Entry.BatchDigest || SameFile || SameFileId;
  });
  return Found == FEntries.rend() ? nullptr : &*Found;
}

const TJournalEntry* TJournal::FindProcess(const std::string& ProcessId) const {
  const auto Found = std::find_if(FEntries.begin(), FEntries.end(), [&](const TJournalEntry& Each) {
    return !ProcessId.empty() && Each.ProcessId == ProcessId;
  });
  return Found == FEntries.end() ? nullptr : &*Found;
}

std::string Digest(std::string_view Text) {
  std::array<unsigned char, EVP_MAX_MD_SIZE> Bytes{};
  unsigned int Length = 0;
  if (EVP_Digest(Text.data(), Text.size(), Bytes.data(), &Length, EVP_sha256(), nullptr) != 1)
    throw TBeamError("The digest of the batch cannot be computed");
  std::string Result;
  for (unsigned int Index = 0; Index < Length; ++Index) {
    static constexpr char Digits[] = "0123456789abcdef";
    Result += Digits[Bytes[Index] >> 4];
    Result += Digits[Bytes[Index] & 15];
  }
  return Result;
}

}  // namespace oxSuperAPI
