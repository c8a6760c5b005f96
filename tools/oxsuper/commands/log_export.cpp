#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include "commands/log.h"
#include "log_html.h"
#include "output.h"
#include "oxSuperAPI/reference/private_file.h"

namespace oxSuperAPI {
namespace {

struct TExportOptions {
  TLogFilter Filter;
  std::string Format = "jsonl";
  std::string File;
  std::string Masking;
};

/// Where the pieces of an export go: standard output, or a new file of the owner's alone that is removed again unless
/// it is complete.
class TExportFile {
 public:
  explicit TExportFile(const std::string& Name) : FName(Name), FStream(stdout) {
    if (FName.empty()) return;
    CreatePrivateFile(FName, "export", {});
    FStream = std::fopen(FName.c_str(), "wb");
    if (!FStream) Fail();
  }
  ~TExportFile() {
    if (FName.empty() || !FStream) return;
    std::fclose(FStream);
    std::error_code Ignored;
    std::filesystem::remove(FName, Ignored);
  }
  TExportFile(const TExportFile&) = delete;

  void Write(std::string_view Text) {
    if (FName.empty())
      PrintText(Text);
    else if (std::fwrite(Text.data(), 1, Text.size(), FStream) != Text.size())
      Fail();
  }
  void Finish() {
    if (std::fflush(FStream) != 0) Fail();
    if (!FName.empty()) std::fclose(FStream);
    FStream = nullptr;
  }

 private:
  [[noreturn]] void Fail() {
    throw TToolError(exitFailed, "Cannot write the export " + FName + ": " + std::strerror(errno));
  }
  std::string FName;
  std::FILE* FStream;
};

std::string LineOf(const TLogRow& Row) {
  TJSONObject Object;
  AddNumber(Object, "row", Row.Id);
  AddText(Object, "when", Row.When);
  AddText(Object, "source", Row.Source);
  AddText(Object, "method", Row.Method);
  AddText(Object, "url", Row.URL);
  AddText(Object, "status", Row.Status);
  AddText(Object, "agent", Row.Agent);
  AddText(Object, "requestHeader", Row.RequestHeader);
  AddText(Object, "request", Row.RequestBody);
  AddText(Object, "response", Row.Response);
  AddText(Object, "details", Row.Details);
  return PrintJSON(Object, TJSONLayout::Compact) + "\n";
}

TExit Export(const TToolOptions& Options, const TExportOptions& Own) {
  TSession Session(Options);
  TLogMasking Masking = std::max(ConfiguredMasking(Session), TLogMasking::Tokens);
  if (Own.Masking == "off") {
    Masking = TLogMasking::Off;
    Note("oxsuper: the export holds what the rows hold, tokens and people's data included: keep it to yourself");
  } else if (!Own.Masking.empty()) {
    Masking = std::max(Masking, LogMaskingOf(Own.Masking));
  }
  TCallLog Log = OpenCallLog(Session, Masking);
  const std::vector<TLogHead> Heads = Log.Find(Own.Filter);
  TExportFile File(Own.File);
  const bool Page = Own.Format == "html";
  if (Page) File.Write(LogPageHead(Heads, std::string(LogMaskingName(Masking))));
  std::size_t Written = 0;
  for (const TLogHead& Head : Heads) {
    const std::optional<TLogRow> Row = Log.Read(Head.Id);
    if (!Row) continue;  // deleted since
    File.Write(Page ? LogPageRow(*Row) : LineOf(*Row));
    ++Written;
  }
  if (Page) File.Write(LogPageEnd());
  File.Finish();
  if (Own.File.empty()) return exitDone;
  if (Options.Json) {
    TJSONObject Document;
    AddText(Document, "file", Own.File);
    AddText(Document, "masking", std::string(LogMaskingName(Masking)));
    AddNumber(Document, "rows", static_cast<std::int64_t>(Written));
    PrintDocument(Document);
  } else {
    PrintLine(Counted(Written, "row") + " written to " + Own.File + " (" + std::string(LogMaskingName(Masking)) + ").");
  }
  return exitDone;
}

}  // namespace

void AddLogExportCommand(TCommandLine Line) {
  CLI::App* Command = Line.App.add_subcommand("export", "Requests and answers for others to read, masked");
  auto Values = std::make_shared<TExportOptions>();
  AddLogFilter(Command, Values->Filter);
  Command->add_option("-n,--count", Values->Filter.Count, "The last ones only")->check(CLI::Range(1, 1000000));
  Command->add_option("--format", Values->Format, "jsonl: a JSON object a line; html: one page")
      ->check(CLI::IsMember({"jsonl", "html"}))
      ->capture_default_str();
  Command->add_option("-o,--output", Values->File, "A new file, readable by you alone; otherwise standard output");
  Command
      ->add_option("--masking", Values->Masking,
                   "tokens or private: at least this; off: as the rows are. Otherwise log.masking, at least tokens")
      ->check(CLI::IsMember({"off", "tokens", "private"}));
  OnCommand(Command, Line, Values, Export);
}

}  // namespace oxSuperAPI
