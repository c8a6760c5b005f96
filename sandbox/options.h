#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace sandbox {

/// What the command line decides. Read once at start, constant afterwards.
struct Options {
  unsigned short port = 0;
  std::vector<std::string> hosts;          ///< names in the server certificate, beside localhost and 127.0.0.1
  std::string dir;                         ///< for ca.pem; empty: a temporary directory, removed at the end
  std::string state;                       ///< file that keeps the state; empty: memory only
  std::string secrets;                     ///< file with the secrets of the two system channels; empty: the defaults
  std::chrono::milliseconds timeStep{};    ///< how long a batch stays in a status; 0: until it is told to move
  std::chrono::seconds tokenLifetime{};    ///< "expires_in" of every token
  std::chrono::milliseconds lifetime{};    ///< ends by itself after this time; 0: never
  std::vector<std::string> preRegistered;  ///< customers that may activate without a register call
  bool preRegisterAll = false;
  bool parentPipe = false;  ///< end when standard input ends
  bool verbose = false;     ///< one line a request on standard error

  std::string applicationSecret = "sandbox-application-secret-0001";
  std::string administratorSecret = "sandbox-administrator-secret-01";
};

/// Nothing when the process shall end now with `exitCode` (help, or a usage error that was printed).
std::optional<Options> ReadOptions(int argc, char** argv, int& exitCode);

}  // namespace sandbox
