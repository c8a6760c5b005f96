#include "oxSuperAPI/reference/editor_terminal.h"

#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>

#include <csignal>
#include <cstdlib>

#include "temporary_directory.h"

namespace oxSuperAPI::tests {
namespace {

/// A form on a terminal of its own, with a piece of shell as the editor; "$1" is the file.
struct TTerminalTest {
  TEditorKind Kind = TEditorKind::Request;
  TStringList Lines = TStringList({R"({"a":1,)", R"("b":"two"})"});
  std::string Typed{};                 ///< by the person, into the terminal
  std::string Command = "$ed --wait";  ///< $EDITOR
  TTemporaryDirectory Directory{};
  std::string Seen{};  ///< on the terminal
  int Status = 0;      ///< of the process

  /// "cancel", "error ...", or what the form gave back: skip, status, entries, text.
  std::string Edit(const std::string& Script) {
    std::filesystem::create_directory(Directory / "run");
    std::filesystem::permissions(Directory / "run", std::filesystem::perms::owner_all);
    std::filesystem::remove(Directory / "result");
    Directory.Write("ed", "#!/bin/sh\nfor f; do :; done; set -- \"$f\"\ncd '" + (Directory / "") + "'\n" + Script,
                    0700);
    int Master = -1;
    const pid_t Child = forkpty(&Master, nullptr, nullptr, nullptr);
    if (Child == 0) Run();
    EXPECT_EQ(write(Master, Typed.data(), Typed.size()), static_cast<ssize_t>(Typed.size()));
    char Buffer[4096];
    for (ssize_t Count = 0; (Count = read(Master, Buffer, sizeof Buffer)) > 0;)
      Seen.append(Buffer, static_cast<std::size_t>(Count));
    waitpid(Child, &Status, 0);
    close(Master);
    EXPECT_TRUE(std::filesystem::is_empty(Directory / "run")) << Script;
    return ReadFile(Directory / "result");
  }

  [[noreturn]] void Run() {
    for (const int Signal : {SIGINT, SIGTERM, SIGHUP}) std::signal(Signal, SIG_DFL);
    setenv("XDG_RUNTIME_DIR", (Directory / "run").c_str(), 1);
    setenv("ed", (Directory / "ed").c_str(), 1);
    unsetenv("VISUAL");
    setenv("EDITOR", Command.c_str(), 1);
    std::string Result = "cancel";
    try {
      const auto Form = CreateTerminalEditor(Kind);
      Form->SetCaption("Edit this");
      Form->SetLines(Lines);
      Form->SetStatusText("500");
      if (Form->ShowModal() == mrOk)
        Result = (Form->SkipChecked() ? "skip " : "") + Form->StatusText() + " " +
                 std::to_string(Form->Lines().Count()) + " " + Form->Lines().Text();
    } catch (const TBeamError& Error) {
      Result = "error " + std::string(Error.what());
    }
    Directory.Write("result", Result);
    _exit(0);
  }
};

const std::string Whole = "{\"a\":1,\r\n\"b\":\"two\"}";

TEST(TerminalEditor, GivesBackWhatThePersonLeft) {
  const std::pair<const char*, std::string> Cases[] = {
      {"exit 0", "500 2 " + Whole},
      {"exit 1", "cancel"},
      {": >$1", "cancel"},
      {"rm $1", "cancel"},
      {"kill -KILL $$", "cancel"},
      {"sed -i 's/two/2 \\xC3\\xA9/' $1", "500 1 {\"a\":1,\r\n\"b\":\"2 \xC3\xA9\"}"},
      {"sed -i 's/$/\\r/' $1", "500 2 " + Whole},
      {"printf '#more' >>$1; sed -i '/^{/,$ s/.*/# {}/;s/no$/ Yes /' $1",
       "skip 500 1 # {}\r\n# {}\r\n# {}\r\n# {}\r\n# {}"},
      {"cat $1 >copy; mv copy $1; chmod 644 $1; sed -i s/two/2/ $1", "500 1 {\"a\":1,\r\n\"b\":\"2\"}"},
      // a header that is not understood comes back with what was typed
      {"test -e once && sed -i 's/^#* *skip:.*/skip: no/' $1 || sed -i 's/skip: no/skip: 2/;s/two/3/' $1; cp $1 once",
       "500 1 {\"a\":1,\r\n\"b\":\"3\"}"},
      {"sed -i '/>8/d' $1", "cancel"},
  };
  for (const auto& [Script, Expected] : Cases) EXPECT_EQ(TTerminalTest().Edit(Script), Expected) << Script;

  TTerminalTest Response{.Kind = TEditorKind::Response, .Lines = TStringList({"# no\n# JSON\n"})};
  EXPECT_EQ(Response.Edit("sed -i 's/: 500/: 404/' $1"), "404 1 # no\n# JSON\n");
  EXPECT_EQ(Response.Edit("test -e once && sed -i 's/^# status:.*/# status: 201/' $1 || sed -i 's/: 500/: 50x/' $1\n"
                          "cp $1 once"),
            "201 1 # no\n# JSON\n");
  EXPECT_TRUE(Holds(ReadFile(Response.Directory / "once"), "# PLEASE CORRECT: \"status: 50x\" has to be a number"));
}

TEST(TerminalEditor, AsksWhetherARequestThatIsNoJSONIsMeantSo) {
  const char* const Spoil = "test -e again && sed -i 's/:: 1/: 2/' $1; sed -i 's/: 1/:: 1/' $1; : >again";
  for (const auto& [Typed, Expected] : {std::pair{"s\n", "500 1 {\"a\":: 1,\r\n\"b\":\"two\"}"},
                                        {"what?\nc\n", "cancel"},
                                        {"e\n", "500 1 {\"a\":2,\r\n\"b\":\"two\"}"},
                                        {"\x04", "cancel"}}) {
    TTerminalTest Terminal{.Typed = Typed};
    EXPECT_EQ(Terminal.Edit(Spoil), Expected) << Typed;
    EXPECT_TRUE(Holds(Terminal.Seen, "not JSON (line 2 below the header, column 7: Invalid value.)")) << Terminal.Seen;
  }
}

TEST(TerminalEditor, RunsWhatPeopleWriteIntoTheirVariables) {
  TTerminalTest Terminal;
  const std::string Look = "stat -c %a $1 $(dirname $1) >rights; head -1 $1 >>rights";
  for (const std::string Command : {"", " -a -b", " 'a b'"}) {
    Terminal.Command = Terminal.Directory / "ed" + Command;
    EXPECT_EQ(Terminal.Edit(Look), "500 2 " + Whole) << Command;
    EXPECT_EQ(ReadFile(Terminal.Directory / "rights"), "600\n700\n# Edit this\n");
  }
  Terminal.Command = "/no/such/editor";
  EXPECT_TRUE(Terminal.Edit("").starts_with("error Cannot start the editor /no/such/editor")) << Terminal.Edit("");
}

TEST(TerminalEditor, LeavesNothingBehindWhenASignalEndsTheProcess) {
  TTerminalTest Terminal;
  Terminal.Command = Terminal.Directory / "ed";
  for (const auto& [Script, Signal] : {std::pair{"kill -TERM $PPID; exec cat", SIGTERM},
                                       {"trap '' TERM; kill -HUP $PPID; while :; do read x; done", SIGHUP},
                                       {"kill -INT $PPID $$", SIGINT}}) {
    EXPECT_EQ(Terminal.Edit(Script), "") << Script;
    EXPECT_TRUE(WIFSIGNALED(Terminal.Status) && WTERMSIG(Terminal.Status) == Signal) << Terminal.Status;
  }
  EXPECT_EQ(Terminal.Edit("trap '' INT; kill -INT $PPID"), "500 2 " + Whole) << "the editor's own interrupt";
}

TEST(TerminalEditor, IsNotOfferedWithoutATerminal) {
  const pid_t Child = fork();
  if (Child == 0) {
    setsid();
    _exit(TerminalEditorAvailable() || CreateTerminalEditor(TEditorKind::Request) ? 1 : 0);
  }
  int Status = -1;
  waitpid(Child, &Status, 0);
  EXPECT_EQ(Status, 0);
}

}  // namespace
}  // namespace oxSuperAPI::tests
