#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>

#include <vector>

#include "oxSuperAPI/reference/log_spdlog.h"
#include "oxSuperAPI/reference/system_linux.h"
#include "temporary_directory.h"

namespace oxSuperAPI::tests {

TEST(HostLog, WritesOneLineAnEntryWithTimeSeverityAndKind) {
  const TTemporaryDirectory Directory;
  TSpdlogLog Log({.FileName = Directory / "host.log"});
  Log.AddToLog("plain {} %v", 75, TLogSeverity::Information);
  Log.AddToLog("two\r\n2024-01-01 00:00:00.000 [error] 75 forged", 75, TLogSeverity::Warning);
  Log.AddToLog("", 3, TLogSeverity::Error);
  std::istringstream Text(ReadFile(Directory / "host.log"));
  std::vector<std::string> Lines;
  for (std::string Line; std::getline(Text, Line);) Lines.push_back(Line);
  ASSERT_EQ(Lines.size(), 3U);
  ASSERT_TRUE(Lines[0].size() > 23 && Lines[1].size() > 23 && Lines[2].size() > 23);
  EXPECT_EQ(Lines[0].substr(23), " [info] 75 plain {} %v");
  EXPECT_EQ(Lines[1].substr(23), " [warning] 75 two\\r\\n2024-01-01 00:00:00.000 [error] 75 forged");
  EXPECT_EQ(Lines[2].substr(23), " [error] 3 ");
}

TEST(HostLog, EscapesWhatCouldForgeALineOrDriveATerminal) {
  EXPECT_EQ(EscapeForLog("a\tb\x1b[31m\x7f\\n"), "a\\tb\\x1b[31m\\x7f\\\\n");
  EXPECT_EQ(EscapeForLog(std::string("\0", 1)), "\\x00");
  EXPECT_EQ(EscapeForLog("\xC2\x9B"
                         "31m \xC3\x9C \xC2\xA9 \xC2"),
            "\\x9b31m \xC3\x9C \xC2\xA9 \xC2");
}

TEST(HostLog, RotatesAndStaysTheOwnersAlone) {
  const TTemporaryDirectory Directory;
  const mode_t Before = umask(0);
  {
    TSpdlogLog Log({.FileName = Directory / "host.log", .MaxBytes = 1000, .KeptFiles = 2});
    for (int Line = 0; Line < 100; ++Line) Log.AddToLog(std::string(90, 'x'), 75, TLogSeverity::Information);
  }
  umask(Before);
  for (const char* Name : {"host.log", "host.1.log", "host.2.log"}) EXPECT_EQ(ModeOf(Directory / Name), 0600U) << Name;
  EXPECT_FALSE(std::filesystem::exists(Directory / "host.3.log"));
  EXPECT_LE(std::filesystem::file_size(Directory / "host.1.log"), 1000U);
}

TEST(HostLog, LosesLinesButNothingElseWhileItsDirectoryIsGone) {
  const TTemporaryDirectory Directory;
  const std::string Folder = Directory / "log", File = Folder + "/host.log";
  std::filesystem::create_directory(Folder);
  TSpdlogLog Log({.FileName = File, .MaxBytes = 1000, .KeptFiles = 1});
  std::filesystem::remove_all(Folder);
  for (int Line = 0; Line < 30; ++Line) Log.AddToLog(std::string(90, 'x'), 75, TLogSeverity::Information);
  std::filesystem::create_directory(Folder);
  Log.AddToLog("back", 75, TLogSeverity::Information);
  EXPECT_PRED2(Holds, ReadFile(File), "75 back\n");
}

TEST(HostLog, IsRefusedUnlessItIsPrivate) {
  const TTemporaryDirectory Directory;
  EXPECT_ERROR(TSpdlogLog({.FileName = Directory.Write("wide.log", "", 0644)}), "chmod 600");
  std::filesystem::create_symlink(Directory.Write("target", ""), Directory / "link.log");
  EXPECT_ERROR(TSpdlogLog({.FileName = Directory / "link.log"}), "symbolic link");
  EXPECT_ERROR(TSpdlogLog({.FileName = Directory / "no/such/host.log"}), "host log");
}

namespace {

// Asks in a child process, on a terminal of its own or without one; -1 when that failed.
int SessionIsInteractive(bool Terminal, bool InputFromTerminal) {
  int Master = -1;
  const pid_t Child = Terminal ? forkpty(&Master, nullptr, nullptr, nullptr) : fork();
  if (Child == 0) {
    if (!Terminal) setsid();
    if (!InputFromTerminal) close(STDIN_FILENO);
    const TLinuxSystem System;
    std::uint32_t Session = 99;
    const bool Known = System.ProcessIdToSessionId(System.GetCurrentProcessId(), Session);
    _exit(!Known ? 2 : Session == 0 ? 0 : 1);
  }
  int Status = -1;
  if (Child < 0 || waitpid(Child, &Status, 0) != Child || !WIFEXITED(Status)) return -1;
  if (Master >= 0) close(Master);
  return WEXITSTATUS(Status);
}

}  // namespace

TEST(LinuxSystem, CountsAsAServiceWithoutATerminal) {
  EXPECT_EQ(SessionIsInteractive(true, true), 1);
  EXPECT_EQ(SessionIsInteractive(true, false), 0);
  EXPECT_EQ(SessionIsInteractive(false, true), 0);
  const TLinuxSystem System;
  std::uint32_t Session = 99;
  EXPECT_FALSE(System.ProcessIdToSessionId(System.GetCurrentProcessId() + 1, Session));
  EXPECT_EQ(Session, 0U);
}

TEST(LinuxSystem, MachineNameHoldsNoDomain) {
  EXPECT_NE(MachineName(), "");
  EXPECT_EQ(MachineName().find('.'), std::string::npos);
  EXPECT_NE(MachineDomain(), "(none)");
}

}  // namespace oxSuperAPI::tests
