#include "sandbox_process.h"

#include <curl/curl.h>
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <boost/json/src.hpp>
#include <chrono>
#include <stdexcept>
#include <thread>

namespace sandbox_test {

Sandbox::Sandbox(std::vector<std::string> options) {
  options.insert(options.begin(), {SANDBOX_EXECUTABLE, "--parent-pipe"});
  if (std::ranges::find(options, "--lifetime") == options.end()) options.insert(options.end(), {"--lifetime", "100"});
  std::vector<char*> arguments;
  for (std::string& option : options) arguments.push_back(option.data());
  arguments.push_back(nullptr);

  int in[2], out[2];
  if (::pipe2(in, O_CLOEXEC) != 0 || ::pipe2(out, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  posix_spawn_file_actions_t actions;
  ::posix_spawn_file_actions_init(&actions);
  ::posix_spawn_file_actions_adddup2(&actions, in[0], STDIN_FILENO);
  ::posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
  const int failed = ::posix_spawn(&pid_, SANDBOX_EXECUTABLE, &actions, nullptr, arguments.data(), environ);
  ::posix_spawn_file_actions_destroy(&actions);
  ::close(in[0]);
  ::close(out[1]);
  input_ = in[1];
  if (failed != 0) pid_ = -1;

  std::string line;
  char c = 0;
  while (::read(out[0], &c, 1) == 1 && c != '\n') line += c;
  ::close(out[0]);
  if (!line.empty()) ready_ = json::parse(line);
}

Sandbox::~Sandbox() {
  if (pid_ > 0 && Stop() == -1 && pid_ > 0) {
    ::kill(pid_, SIGKILL);
    ::waitpid(pid_, nullptr, 0);
  }
}

void Sandbox::CloseInput() {
  if (input_ >= 0) ::close(input_);
  input_ = -1;
}

int Sandbox::WaitForEnd(double seconds) {
  for (int tries = static_cast<int>(seconds * 100); tries >= 0 && pid_ > 0; --tries) {
    int status = 0;
    if (::waitpid(pid_, &status, WNOHANG) == pid_) {
      pid_ = -1;
      return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return -1;
}

std::string Reply::Text(const char* key) const {
  const json::value document = Json();
  const json::value* member = document.is_object() ? document.get_object().if_contains(key) : nullptr;
  if (member == nullptr) return "";
  return member->is_string() ? json::value_to<std::string>(*member) : json::serialize(*member);
}

Client::Client(const Sandbox& sandbox, std::string host)
    : caFile(sandbox.CaFile()),
      curl_(::curl_easy_init()),
      host_(std::move(host)),
      connectTo_("::127.0.0.1:" + sandbox.Port()) {}

Client::~Client() {
  ::curl_easy_cleanup(curl_);
}

Reply Client::Send(const std::string& method, const std::string& path, const std::string& body,
                   const std::string& contentType) {
  Reply reply;
  const auto append = +[](char* data, std::size_t, std::size_t count, void* text) {
    static_cast<std::string*>(text)->append(data, count);
    return count;
  };
  curl_slist* headers = nullptr;
  if (!body.empty()) headers = ::curl_slist_append(headers, ("Content-Type: " + contentType).c_str());
  if (!token.empty()) headers = ::curl_slist_append(headers, ("authorization: Bearer " + token).c_str());
  curl_slist* connectTo = ::curl_slist_append(nullptr, connectTo_.c_str());

  ::curl_easy_reset(curl_);
  const auto set = [&](CURLoption option, auto value) { ::curl_easy_setopt(curl_, option, value); };
  set(CURLOPT_URL, ("https://" + host_ + path).c_str());
  set(CURLOPT_CONNECT_TO, connectTo);
  set(CURLOPT_CAINFO, caFile.c_str());
  set(CURLOPT_PROXY, "");
  set(CURLOPT_NOSIGNAL, 1L);
  set(CURLOPT_TIMEOUT_MS, timeoutMilliseconds);
  set(CURLOPT_HTTPHEADER, headers);
  set(CURLOPT_WRITEFUNCTION, append);
  set(CURLOPT_WRITEDATA, &reply.body);
  if (method != "GET") {
    set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
    set(CURLOPT_POSTFIELDS, body.data());
    set(CURLOPT_CUSTOMREQUEST, method.c_str());
  }
  reply.curl = ::curl_easy_perform(curl_);
  ::curl_easy_getinfo(curl_, CURLINFO_RESPONSE_CODE, &reply.status);
  ::curl_easy_getinfo(curl_, CURLINFO_NUM_CONNECTS, &reply.connects);
  ::curl_slist_free_all(headers);
  ::curl_slist_free_all(connectTo);
  return reply;
}

}  // namespace sandbox_test
