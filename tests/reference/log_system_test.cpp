#include <pty.h>
#include <sys/wait.h>

#include "oxSuperAPI/reference/log_spdlog.h"
#include "oxSuperAPI/reference/system_linux.h"
#include "temporary_directory.h"

namespace oxSuperAPI::tests {
namespace {

TEST(HostLog, WritesOneLineAnEntryAndEscapesWhatCouldForgeOneOrDriveATerminal) {
  const TTemporaryDirectory Directory;
  TSpdlogLog Log({.FileName = Directory / "host.log"});
  Log.AddToLog("plain {} %v", 75, TLogSeverity::Information);
  Log.AddToLog("two\r\n2024-01-01 00:00:00.000 [error] 75 forged", 75, TLogSeverity::Warning);
  Log.AddToLog("", 3, TLogSeverity::Error);
  std::istringstream Text(ReadFile(Directory / "host.log"));
  std::string Rest;  // behind the time
  for (std::string Line; std::getline(Text, Line);) Rest += Line.substr(std::min<std::size_t>(Line.size(), 23)) + "\n";
  EXPECT_EQ(Rest,
            " [info] 75 plain {} %v\n [warning] 75 two\\r\\n2024-01-01 00:00:00.000 [error] 75 forged\n [error] 3 \n");
  EXPECT_EQ(EscapeForLog(std::string("a\tb\x1b[31m\x7f\\n\0", 12)), "a\\tb\\x1b[31m\\x7f\\\\n\\x00");
  EXPECT_EQ(EscapeForLog("\xC2\x9Bm \xC3\x9C \xC2\xA9 \xC2"), "\\x9bm \xC3\x9C \xC2\xA9 \xC2");
}

TEST(HostLog, RotatesAndStaysTheOwnersAloneAndLosesOnlyLinesWhileItsDirectoryIsGone) {
  const TTemporaryDirectory Directory;
  const std::string Folder = Directory / "log";
  std::filesystem::create_directory(Folder);
  const mode_t Before = umask(0);
  TSpdlogLog Log({.FileName = Folder + "/host.log", .MaxBytes = 1000, .KeptFiles = 2});
  const auto Fill = [&] {
    for (int Line = 0; Line < 100; ++Line) Log.AddToLog(std::string(90, 'x'), 75, TLogSeverity::Information);
  };
  Fill();
  umask(Before);
  for (const char* Name : {"/host.log", "/host.1.log", "/host.2.log"}) EXPECT_EQ(ModeOf(Folder + Name), 0600U) << Name;
  EXPECT_FALSE(std::filesystem::exists(Folder + "/host.3.log"));
  EXPECT_LE(std::filesystem::file_size(Folder + "/host.1.log"), 1000U);
  std::filesystem::remove_all(Folder);
  Fill();
  std::filesystem::create_directory(Folder);
  Log.AddToLog("back", 75, TLogSeverity::Information);
  EXPECT_PRED2(Holds, ReadFile(Folder + "/host.log"), "75 back\n");
}

TEST(HostLog, IsRefusedUnlessItIsPrivate) {
  const TTemporaryDirectory Directory;
  EXPECT_ERROR(TSpdlogLog({.FileName = Directory.Write("wide.log", "", 0644)}), "chmod 600");
  std::filesystem::create_symlink(Directory.Write("target", ""), Directory / "link.log");
  EXPECT_ERROR(TSpdlogLog({.FileName = Directory / "link.log"}), "symbolic link");
  EXPECT_ERROR(TSpdlogLog({.FileName = Directory / "no/such/host.log"}), "host log");
}

// Asks in a child process, on a terminal of its own or without one; -1 when that failed.
int SessionIsInteractive(bool Terminal, bool InputFromTerminal) {
  int Master = -1, Status = -1;
  const pid_t Child = Terminal ? forkpty(&Master, nullptr, nullptr, nullptr) : fork();
  if (Child == 0) {
    if (!Terminal) setsid();
    if (!InputFromTerminal) close(STDIN_FILENO);
    const TLinuxSystem System;
    std::uint32_t Session = 99;
    const bool Known = System.ProcessIdToSessionId(System.GetCurrentProcessId(), Session);
    _exit(!Known ? 2 : Session == 0 ? 0 : 1);
  }
  if (Child < 0 || waitpid(Child, &Status, 0) != Child || !WIFEXITED(Status)) return -1;
  if (Master >= 0) close(Master);
  return WEXITSTATUS(Status);
}

TEST(LinuxSystem, CountsAsAServiceWithoutATerminalAndNamesTheMachineWithoutItsDomain) {
  EXPECT_EQ(SessionIsInteractive(true, true), 1);
  EXPECT_EQ(SessionIsInteractive(true, false), 0);
  EXPECT_EQ(SessionIsInteractive(false, true), 0);
  const TLinuxSystem System;
  std::uint32_t Session = 99;
  EXPECT_FALSE(System.ProcessIdToSessionId(System.GetCurrentProcessId() + 1, Session));
  EXPECT_EQ(Session, 0U);
  EXPECT_TRUE(!MachineName().empty() && !Holds(MachineName(), ".") && MachineDomain() != "(none)");
}

}  // namespace
}  // namespace oxSuperAPI::tests
