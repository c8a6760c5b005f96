#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "certificates.h"
#include "options.h"
#include "server.h"

namespace sandbox {
namespace {

namespace fs = std::filesystem;

/// The directory that ca.pem lies in. One that nobody named is removed at the end.
class Directory {
 public:
  explicit Directory(const std::string& wanted) : path_(wanted), temporary_(wanted.empty()) {
    if (temporary_) {
      std::string pattern = (fs::temp_directory_path() / "beam-sandbox-XXXXXX").string();
      if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("Cannot make a directory like " + pattern);
      path_ = pattern;
    } else if (fs::create_directories(path_)) {
      fs::permissions(path_, fs::perms::owner_all);
    }
    path_ = fs::absolute(path_);
  }
  ~Directory() {
    std::error_code ignored;
    if (temporary_) fs::remove_all(path_, ignored);
  }
  Directory(const Directory&) = delete;
  Directory& operator=(const Directory&) = delete;

  std::string Write(const std::string& name, const std::string& text) const {
    const fs::path file = path_ / name;
    std::ofstream stream(file, std::ios::trunc);
    stream << text;
    if (!stream.flush()) throw std::runtime_error("Cannot write " + file.string());
    return file.string();
  }

 private:
  fs::path path_;
  bool temporary_;
};

void PrintReady(const Options& options, unsigned short port, const std::string& authority) {
  json::array hosts;
  for (const std::string& host : options.hosts) hosts.emplace_back(host);
  const json::value ready = {{"ready", true},           {"address", "127.0.0.1"}, {"port", port},
                             {"ca", authority},         {"pid", ::getpid()},      {"hosts", std::move(hosts)},
                             {"control", "/__sandbox"}, {"state", options.state}};
  std::cout << json::serialize(ready) << std::endl;
}

int Main(int argc, char** argv) {
  ::umask(077);
  std::signal(SIGPIPE, SIG_IGN);
  int exitCode = 0;
  const std::optional<Options> options = ReadOptions(argc, argv, exitCode);
  if (!options) return exitCode;
  try {
    Services services(*options);
    const Certificates certificates = MakeCertificates(options->hosts);
    Server server(services, certificates);
    const Directory directory(options->dir);
    PrintReady(*options, server.Port(), directory.Write("ca.pem", certificates.authority));
    server.Run();
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "beam-sandbox: " << error.what() << std::endl;
    return 1;
  }
}

}  // namespace
}  // namespace sandbox

int main(int argc, char** argv) {
  return sandbox::Main(argc, argv);
}
