#pragma once

#include <sys/types.h>

#include <boost/json.hpp>
#include <string>
#include <vector>

namespace sandbox_test {

namespace json = boost::json;

/// A running beam-sandbox. It ends with this object, or with the test process, whichever is first.
class Sandbox {
 public:
  explicit Sandbox(std::vector<std::string> options = {});
  ~Sandbox();
  Sandbox(const Sandbox&) = delete;

  const json::value& Ready() const { return ready_; }
  std::string Port() const { return std::to_string(ready_.at("port").as_int64()); }
  std::string CaFile() const { return json::value_to<std::string>(ready_.at("ca")); }
  pid_t Pid() const { return pid_; }

  void CloseInput();
  /// Exit code once the process has ended; -1 when it is still there after `seconds`, or died of a signal.
  int WaitForEnd(double seconds);
  /// Closes its input and waits.
  int Stop() {
    CloseInput();
    return WaitForEnd(10);
  }

 private:
  pid_t pid_ = -1;
  int input_ = -1;
  json::value ready_;
};

struct Reply {
  int curl = 0;     ///< CURLcode
  long status = 0;  ///< 0 when no answer came
  std::string body;
  long connects = 0;  ///< connections opened for this request

  json::value Json() const { return json::parse(body); }
  std::string Text(const char* key) const;
};

/// A client with one kept connection.
class Client {
 public:
  explicit Client(const Sandbox& sandbox, std::string host = "api.dev.beam.example");
  ~Client();
  Client(const Client&) = delete;

  Reply Send(const std::string& method, const std::string& path, const std::string& body = {},
             const std::string& contentType = "application/json");
  Reply Control(const std::string& method, const std::string& path, const std::string& body = {}) {
    return Send(method, "/__sandbox/" + path, body);
  }

  std::string token;                 ///< sent when not empty
  std::string caFile;                ///< the sandbox's own by default
  long timeoutMilliseconds = 20000;  //

 private:
  void* curl_;
  std::string host_;
  std::string connectTo_;
};

}  // namespace sandbox_test
