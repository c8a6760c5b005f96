#pragma once

#include <functional>
#include <stdexcept>
#include <string>

/// What every command of oxsuper shares: the options that stand before the command, and the exit codes.
namespace oxSuperAPI {

/// Exit codes: scripts depend on them. docs/adr/0005-tool-conventions.md says which failure leads to which.
enum TExit : int {
  exitDone = 0,
  exitFailed = 1,            ///< failed before anything was sent
  exitUsage = 2,             ///< wrong command line
  exitRefusedHere = 3,       ///< refused by the tool's own checks
  exitNotAuthenticated = 4,  ///< not activated, or the service does not accept the credentials
  exitRefusedByService = 5,  ///< also a submission that came back with errors
  exitServiceFailure = 6,    ///< the service cannot be reached or does not work
  exitOutcomeUnknown = 7,    ///< the request may have arrived and have been carried out
  exitInterrupted = 130
};

/// Ends a command with a message for the person and an exit code.
class TToolError : public std::runtime_error {
 public:
  TToolError(TExit Exit, const std::string& Text) : std::runtime_error(Text), FExit(Exit) {}
  TExit Exit() const { return FExit; }

 private:
  TExit FExit;
};

struct TToolOptions {
  bool Json = false;       ///< one JSON document on standard output instead of text for people
  std::string ConfigFile;  ///< absolute
  /// Show each request before it is sent, each answer when it has come; the configuration can ask for it, too. @{
  bool EditRequest = false;
  bool EditResponse = false;
  /// @}
};

/// A command as the command line chose it. Raises TToolError, or what the library raises.
using TCommand = std::function<TExit(const TToolOptions&)>;

}  // namespace oxSuperAPI
