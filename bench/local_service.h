#pragma once

#include <sys/types.h>
#include <string>

namespace bench {

/// A minimal HTTPS service on loopback, in a process of its own: its memory does not count, and its time only where
/// what is measured waits for it, the library and its peer alike. It takes any request on kept connections, gives a
/// token to "/auth/token" and the same short answer to all else, and ends with this object or with the process.
class TLocalService {
 public:
  /// `HostName` stands in its certificate, which is written to `CAFile`.
  TLocalService(const std::string& HostName, const std::string& CAFile);
  ~TLocalService();
  TLocalService(const TLocalService&) = delete;

  int Port() const { return FPort; }

 private:
  int FPort = 0;
  int FLifeLine = -1;
  pid_t FProcess = -1;
};

}  // namespace bench
