#include "oxSuperAPI/reference/editor_terminal.h"

#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <utility>

#include "oxSuperAPI/reference/editor_text.h"
#include "oxSuperAPI/reference/json_problem.h"
#include "oxSuperAPI/reference/private_file.h"
#include "oxSuperAPI/reference/terminal_program.h"

namespace oxSuperAPI {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view Marker = "# ------------------------ >8 ------------------------ the text begins below";
constexpr std::size_t MaxFileBytes = std::size_t{1} << 31;

std::string Variable(const char* Name) {
  const char* const Value = std::getenv(Name);
  return Value ? Value : "";
}

std::string EditorCommand() {
  for (const char* Name : {"VISUAL", "EDITOR"})
    if (std::string Command = Variable(Name); Command.find_first_not_of(" \t") != std::string::npos) return Command;
  return access("/usr/bin/editor", X_OK) == 0 ? "/usr/bin/editor" : "vi";
}

/// A directory of the form's own, gone with everything that an editor leaves beside the file.
class TPrivateDirectory {
 public:
  TPrivateDirectory() : FPath((Place() / "oxsuper-edit-XXXXXX").string()) {
    if (!mkdtemp(FPath.data())) throw TBeamError("Cannot make a private directory in " + Place().string());
  }
  ~TPrivateDirectory() {
    std::error_code Ignored;
    fs::remove_all(FPath, Ignored);
  }
  TPrivateDirectory(const TPrivateDirectory&) = delete;
  TPrivateDirectory& operator=(const TPrivateDirectory&) = delete;
  std::string File(const std::string& Name) const { return FPath + "/" + Name; }

 private:
  /// In memory, and the person's alone, where the session has such a place.
  static fs::path Place() {
    const std::string Runtime = Variable("XDG_RUNTIME_DIR");
    struct stat Status {};
    const bool Private = Runtime.starts_with('/') && stat(Runtime.c_str(), &Status) == 0 && S_ISDIR(Status.st_mode) &&
                         Status.st_uid == geteuid() && (Status.st_mode & 077) == 0;
    return Private ? fs::path(Runtime) : fs::temp_directory_path();
  }

  std::string FPath;
};

std::string_view Trimmed(std::string_view Text) {
  const std::size_t First = Text.find_first_not_of(" \t\r\n");
  return First == std::string_view::npos ? "" : Text.substr(First, Text.find_last_not_of(" \t\r\n") - First + 1);
}

/// Takes the first line, without its end, out of `Text`.
std::string_view TakeLine(std::string_view& Text) {
  const std::size_t End = std::min(Text.find('\n'), Text.size());
  const std::string_view Line = Text.substr(0, End);
  Text.remove_prefix(std::min(End + 1, Text.size()));
  return Line;
}

/// What the person left in the file. `Problem` says what is wrong with the header, "" when nothing is.
struct TLeft {
  std::string Status, Skip, Text, Problem;
};

TLeft ReadLeft(std::string_view File, bool IsRequest) {
  TLeft Left;
  if (File.starts_with("\xEF\xBB\xBF")) File.remove_prefix(3);
  bool MarkerFound = false;
  while (!File.empty() && !MarkerFound) {
    std::string_view Line = Trimmed(TakeLine(File));
    MarkerFound = Line == Marker;
    while (Line.starts_with('#')) Line = Trimmed(Line.substr(1));
    for (const auto& [Name, Value] : {std::pair{"status:", &Left.Status}, std::pair{"skip:", &Left.Skip}})
      if (Line.starts_with(Name)) *Value = Trimmed(Line.substr(std::string_view(Name).size()));
  }
  // What is shown holds no CR: these are of an editor that ends its lines so.
  for (std::size_t At = 0; At < File.size(); ++At)
    if (!File.substr(At).starts_with("\r\n")) Left.Text += File[At];
  if (Left.Text.ends_with('\n')) Left.Text.pop_back();  // the one that stands behind the text

  std::transform(Left.Skip.begin(), Left.Skip.end(), Left.Skip.begin(),
                 [](char Letter) { return Letter >= 'A' && Letter <= 'Z' ? static_cast<char>(Letter + 32) : Letter; });
  if (!MarkerFound)
    Left.Problem = fmt::format("the line \"{}\" is missing: put it back above the text", Marker);
  else if (IsRequest && Left.Skip != "yes" && Left.Skip != "no")
    Left.Problem = fmt::format("\"skip: {}\" has to be \"skip: yes\" or \"skip: no\"", Left.Skip);
  else if (!IsRequest && !IsStatusText(Left.Status))
    Left.Problem = fmt::format("\"status: {}\" has to be a number of one to three digits, such as 200", Left.Status);
  return Left;
}

class TTerminalForm final : public TEditorForm {
 public:
  using TEditorForm::TEditorForm;

  int ShowModal() override {
    const TEditorText Text(FLines);
    TTerminal Terminal;  // before the directory, so that a signal that ends the process finds it removed
    const TPrivateDirectory Directory;
    const std::string File = Directory.File(IsRequest() ? "request.txt" : "response.txt");
    CreatePrivateFile(File, "text to edit", Header() + Text.Shown() + "\n");
    for (std::string Refused;;) {
      if (!Terminal.Run(EditorCommand(), {File}) || !PathExists(File)) return mrCancel;
      const std::string Content = ReadEdited(File);
      if (Trimmed(Content).empty()) return mrCancel;
      const TLeft Left = ReadLeft(Content, IsRequest());
      if (!Left.Problem.empty()) {
        if (Content == Refused) return mrCancel;  // pointed out, and left as it is
        Refused = Content;
        ReplacePrivateFile(File, "text to edit", std::string(ProblemMark) + Left.Problem + "\n" + Content);
        continue;
      }
      const bool Skip = Left.Skip == "yes";
      const char Answer = IsRequest() && !Skip ? AskAboutJSON(Terminal, Left.Text) : 's';
      if (Answer == 'c') return mrCancel;
      if (Answer == 'e') continue;
      FLines = Text.Edited(Left.Text);
      FSkip = Skip;
      if (!IsRequest()) FStatus = Left.Status;
      return mrOk;
    }
  }

 private:
  static constexpr std::string_view ProblemMark = "# PLEASE CORRECT: ";

  std::string Header() const {
    std::string Result = "# " + FCaption + "\n#\n";
    Result += IsRequest() ? "# skip: no\n#\n" : "# status: " + FStatus + "\n#\n";
    if (IsRequest()) Result += "# With \"skip: yes\" the request is not sent.\n";
    Result += "# Save and leave the editor for OK. To cancel, empty the file or let the editor fail (:cq in vi).\n# " +
              Explanation() + "\n";
    return Result + std::string(Marker) + "\n";
  }

  /// Without the line of a problem. An editor may have written a new file, with other rights, in the private directory.
  static std::string ReadEdited(const std::string& File) {
    if (!fs::is_symlink(File)) fs::permissions(File, fs::perms::owner_read | fs::perms::owner_write);
    std::string Content = ReadPrivateFile(File, "edited text", MaxFileBytes);
    if (Content.starts_with(ProblemMark)) Content.erase(0, Content.find('\n') + 1);  // npos + 1 is 0
    return Content;
  }

  /// 's' send, 'e' edit again, 'c' cancel.
  static char AskAboutJSON(TTerminal& Terminal, const std::string& Text) {
    if (Text.empty()) return 's';
    const auto Problem = FindJSONProblem(Text);
    while (Problem) {
      const auto Answer = Terminal.Ask(fmt::format(
          "The request is not JSON (line {} below the header, column {}: {}) [e]dit again, [s]end it so, [c]ancel? ",
          Problem->Line, Problem->Column, Problem->Reason));
      if (!Answer) return 'c';
      if (const std::string_view First = Trimmed(*Answer).substr(0, 1); First == "e" || First == "s" || First == "c")
        return First[0];
    }
    return 's';
  }
};

}  // namespace

bool TerminalEditorAvailable() {
  return HasTerminal();
}

std::unique_ptr<TfrmResponseEditor> CreateTerminalEditor(TEditorKind Kind, const TEditorOptions& Options) {
  return TerminalEditorAvailable() ? std::make_unique<TTerminalForm>(Kind, Options) : nullptr;
}

}  // namespace oxSuperAPI
