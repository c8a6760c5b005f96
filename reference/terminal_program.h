#pragma once

#include <csignal>
#include <optional>
#include <string>
#include <vector>

#include "oxSuperAPI/host/uBeamError.h"

namespace oxSuperAPI {

/// Whether a person can be asked on the terminal: the process has one, reads from it, and runs in its foreground.
OXSUPERAPI_EXPORT bool HasTerminal();

/// The controlling terminal, wherever standard output leads to, for programs and questions. As long as this object
/// lives, SIGINT, SIGQUIT, SIGTERM and SIGHUP of its thread wait, so that its user can clean up; then they do what they
/// do.
class OXSUPERAPI_EXPORT TTerminal {
 public:
  /// Raises TBeamError when there is no terminal.
  TTerminal();
  ~TTerminal();
  TTerminal(const TTerminal&) = delete;
  TTerminal& operator=(const TTerminal&) = delete;

  /// Runs a program in the foreground and waits for it; true when it ended with status 0. `Command` is what people
  /// write into $EDITOR: a program with or without arguments, run by `sh` when it holds characters that mean something
  /// to a shell. `Arguments` follow it as they are. SIGTERM and SIGHUP end the program; an interrupt typed on the
  /// terminal is the program's own unless it dies of it. Raises TBeamError when the program cannot be started.
  bool Run(const std::string& Command, const std::vector<std::string>& Arguments);
  /// The line that the person answers; none at the end of input and when one of the signals waits.
  std::optional<std::string> Ask(const std::string& Question);

 private:
  int FTerminal = -1;
  int FSignals = -1;  ///< readable when one of them waits
  sigset_t FMaskBefore{};
};

}  // namespace oxSuperAPI
