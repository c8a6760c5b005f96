#include "interrupt.h"

#include <termios.h>
#include <unistd.h>

#include <csignal>
#include <iostream>

#include "output.h"
#include "tool.h"

namespace oxSuperAPI {
namespace {

// Read and written by the signal handler.
volatile std::sig_atomic_t Deferred = 0;
volatile std::sig_atomic_t Interrupts = 0;
volatile std::sig_atomic_t EchoOff = 0;
termios Terminal{};

void Handle(int) {
  if (EchoOff) ::tcsetattr(STDIN_FILENO, TCSANOW, &Terminal);
  if (!Deferred) ::_exit(exitInterrupted);
  if (Interrupts) ::_exit(exitOutcomeUnknown);
  Interrupts = 1;
  static constexpr char Text[] =
      "\nThe request is on its way: waiting for the answer. Interrupt again to leave without knowing it.\n";
  [[maybe_unused]] const auto Ignored = ::write(STDERR_FILENO, Text, sizeof Text - 1);
}

struct THiddenInput {
  THiddenInput() {
    if (::tcgetattr(STDIN_FILENO, &Terminal) != 0) return;
    termios Hidden = Terminal;
    Hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    EchoOff = 1;
    ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &Hidden);
  }
  ~THiddenInput() {
    if (EchoOff) ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &Terminal);
    EchoOff = 0;
  }
};

}  // namespace

void InstallInterrupt() {
  struct sigaction Action {};
  Action.sa_handler = Handle;
  Action.sa_flags = SA_RESTART;
  sigemptyset(&Action.sa_mask);
  ::sigaction(SIGINT, &Action, nullptr);
  ::sigaction(SIGTERM, &Action, nullptr);
  std::signal(SIGPIPE, SIG_IGN);
}

void DeferInterrupt() {
  Deferred = 1;
}

void ResumeInterrupt() {
  Deferred = 0;
  if (Interrupts) ::_exit(exitInterrupted);
}

std::string ReadSecretLine(const std::string& Prompt) {
  const bool OnTerminal = ::isatty(STDIN_FILENO) == 1;
  std::string Line;
  if (OnTerminal) {
    std::cerr << Prompt << std::flush;
    const THiddenInput Hidden;
    std::getline(std::cin, Line);
    std::cerr << "\n";
  } else {
    std::getline(std::cin, Line);
  }
  if (Line.ends_with('\r')) Line.pop_back();
  if (Line.empty()) throw TToolError(exitUsage, "Nothing was given on standard input");
  return Line;
}

}  // namespace oxSuperAPI
