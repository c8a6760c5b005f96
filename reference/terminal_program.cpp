#include "oxSuperAPI/reference/terminal_program.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <poll.h>
#include <spawn.h>
#include <sys/signalfd.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <ctime>
#include <initializer_list>
#include <sstream>
#include <string_view>
#include <system_error>

extern char** environ;

namespace oxSuperAPI {

namespace {

constexpr const char* TerminalName = "/dev/tty";
constexpr int SecondsToEnd = 2;

sigset_t Signals(std::initializer_list<int> Numbers) {
  sigset_t Set;
  sigemptyset(&Set);
  for (const int Number : Numbers) sigaddset(&Set, Number);
  return Set;
}

[[noreturn]] void Fail(std::string_view What, int Error) {
  throw TBeamError(fmt::format("{}: {}", What, std::generic_category().message(Error)));
}

std::vector<std::string> CommandLine(const std::string& Command, const std::vector<std::string>& Arguments) {
  std::vector<std::string> Line;
  if (Command.find_first_of("|&;<>()$`\\\"'*?[#~=%\n") != std::string::npos) {
    Line = {"sh", "-c", Command + " \"$@\"", Command};
  } else {
    std::istringstream Words(Command);
    for (std::string Word; Words >> Word;) Line.push_back(Word);
  }
  Line.insert(Line.end(), Arguments.begin(), Arguments.end());
  return Line;
}

pid_t Spawn(std::vector<std::string> Line, const sigset_t& Mask) {
  std::vector<char*> Pointers;
  for (std::string& Word : Line) Pointers.push_back(Word.data());
  Pointers.push_back(nullptr);
  posix_spawn_file_actions_t Actions;
  posix_spawn_file_actions_init(&Actions);
  for (const int Stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
    posix_spawn_file_actions_addopen(&Actions, Stream, TerminalName, O_RDWR, 0);
  posix_spawnattr_t Attributes;
  posix_spawnattr_init(&Attributes);
  // What this process ignores or delays is not to be ignored or delayed by the program.
  const sigset_t Defaults = Signals({SIGINT, SIGQUIT, SIGTERM, SIGHUP, SIGPIPE, SIGTSTP});
  posix_spawnattr_setsigdefault(&Attributes, &Defaults);
  posix_spawnattr_setsigmask(&Attributes, &Mask);
  posix_spawnattr_setflags(&Attributes, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
  pid_t Child = 0;
  const int Problem = posix_spawnp(&Child, Pointers[0], &Actions, &Attributes, Pointers.data(), environ);
  posix_spawn_file_actions_destroy(&Actions);
  posix_spawnattr_destroy(&Attributes);
  if (Problem != 0) Fail("Cannot start the editor " + Line[0] + " (it comes from $VISUAL or $EDITOR)", Problem);
  return Child;
}

int WaitFor(pid_t Child) {
  int Status = 0;
  while (waitpid(Child, &Status, 0) < 0)
    if (errno != EINTR) Fail("The editor's end cannot be observed", errno);
  return Status;
}

/// Until the child has ended, or one of `Signals` came: then it is asked to end, and after a while made to.
void WaitOrEnd(pid_t Child, int SignalHandle) {
  const int Handle = static_cast<int>(syscall(SYS_pidfd_open, Child, 0));
  if (Handle < 0) return;  // a kernel without them: the child is waited for, and the signals wait as well
  pollfd Poll[] = {{Handle, POLLIN, 0}, {SignalHandle, POLLIN, 0}};
  while (poll(Poll, 2, -1) < 0 && errno == EINTR) continue;
  if (Poll[0].revents == 0) {
    kill(Child, SIGTERM);
    kill(Child, SIGCONT);
    if (poll(Poll, 1, SecondsToEnd * 1000) == 0) kill(Child, SIGKILL);
  }
  close(Handle);
}

}  // namespace

bool HasTerminal() {
  const int Terminal = open(TerminalName, O_RDWR | O_NOCTTY | O_CLOEXEC);
  if (Terminal < 0) return false;
  const bool Foreground = tcgetpgrp(Terminal) == getpgrp();
  close(Terminal);
  return Foreground && isatty(STDIN_FILENO) == 1;
}

TTerminal::TTerminal() : FTerminal(open(TerminalName, O_RDWR | O_NOCTTY | O_CLOEXEC)) {
  if (FTerminal < 0) Fail("There is no terminal", errno);
  const sigset_t Delayed = Signals({SIGINT, SIGQUIT, SIGTERM, SIGHUP});
  pthread_sigmask(SIG_BLOCK, &Delayed, &FMaskBefore);
  FSignals = signalfd(-1, &Delayed, SFD_CLOEXEC);
}

TTerminal::~TTerminal() {
  close(FTerminal);
  if (FSignals >= 0) close(FSignals);
  pthread_sigmask(SIG_SETMASK, &FMaskBefore, nullptr);
}

bool TTerminal::Run(const std::string& Command, const std::vector<std::string>& Arguments) {
  const sigset_t Ending = Signals({SIGTERM, SIGHUP});
  const int SignalHandle = signalfd(-1, &Ending, SFD_CLOEXEC);
  pid_t Child = 0;
  try {
    Child = Spawn(CommandLine(Command, Arguments), FMaskBefore);
  } catch (...) {
    close(SignalHandle);
    throw;
  }
  WaitOrEnd(Child, SignalHandle);
  close(SignalHandle);
  const int Status = WaitFor(Child);
  const bool Interrupted = (WIFSIGNALED(Status) && (WTERMSIG(Status) == SIGINT || WTERMSIG(Status) == SIGQUIT)) ||
                           (WIFEXITED(Status) && WEXITSTATUS(Status) == 128 + SIGINT);
  if (!Interrupted) {  // the program made something else of the keys
    const sigset_t Typed = Signals({SIGINT, SIGQUIT});
    const timespec Now{};
    while (sigtimedwait(&Typed, nullptr, &Now) > 0) continue;
  }
  return WIFEXITED(Status) && WEXITSTATUS(Status) == 0;
}

std::optional<std::string> TTerminal::Ask(const std::string& Question) {
  if (write(FTerminal, Question.data(), Question.size()) < 0) return std::nullopt;
  std::string Line;
  while (!Line.ends_with('\n')) {
    pollfd Poll[] = {{FTerminal, POLLIN, 0}, {FSignals, POLLIN, 0}};
    while (poll(Poll, 2, -1) < 0 && errno == EINTR) continue;
    char Letter = 0;
    if (Poll[1].revents != 0 || read(FTerminal, &Letter, 1) != 1) return std::nullopt;
    Line += Letter;
  }
  Line.pop_back();
  return Line;
}

}  // namespace oxSuperAPI
