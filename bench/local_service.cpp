#include "local_service.h"

#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <openssl/pem.h>
#include <openssl/ssl.h>
#include <openssl/x509v3.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fcntl.h>

#include <csignal>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <thread>
#include <vector>

namespace bench {

namespace {

template <auto Free>
struct TFree {
  void operator()(auto* Pointer) const { Free(Pointer); }
};

void Need(bool Condition, const char* What) {
  if (!Condition) throw std::runtime_error(std::string("Local service: ") + What);
}

std::unique_ptr<SSL_CTX, TFree<SSL_CTX_free>> MakeContext(const std::string& HostName, const std::string& CAFile) {
  const std::unique_ptr<EVP_PKEY, TFree<EVP_PKEY_free>> Key(EVP_EC_gen("P-256"));
  const std::unique_ptr<X509, TFree<X509_free>> Certificate(X509_new());
  Need(Key && Certificate, "certificate");
  X509_set_version(Certificate.get(), 2);
  ASN1_INTEGER_set(X509_get_serialNumber(Certificate.get()), 1);
  X509_gmtime_adj(X509_getm_notBefore(Certificate.get()), -3600);
  X509_gmtime_adj(X509_getm_notAfter(Certificate.get()), 86'400);
  X509_set_pubkey(Certificate.get(), Key.get());
  X509_NAME_add_entry_by_txt(X509_get_subject_name(Certificate.get()), "CN", MBSTRING_UTF8,
                             reinterpret_cast<const unsigned char*>("bench"), -1, -1, 0);
  X509_set_issuer_name(Certificate.get(), X509_get_subject_name(Certificate.get()));
  const std::unique_ptr<X509_EXTENSION, TFree<X509_EXTENSION_free>> Name(
      X509V3_EXT_conf_nid(nullptr, nullptr, NID_subject_alt_name, ("DNS:" + HostName).c_str()));
  Need(Name && X509_add_ext(Certificate.get(), Name.get(), -1), "certificate's name");
  Need(X509_sign(Certificate.get(), Key.get(), EVP_sha256()) > 0, "certificate's signature");
  std::FILE* const File = std::fopen(CAFile.c_str(), "w");
  Need(File && PEM_write_X509(File, Certificate.get()) && std::fclose(File) == 0, "certificate file");

  std::unique_ptr<SSL_CTX, TFree<SSL_CTX_free>> Context(SSL_CTX_new(TLS_server_method()));
  Need(Context && SSL_CTX_use_certificate(Context.get(), Certificate.get()) &&
           SSL_CTX_use_PrivateKey(Context.get(), Key.get()),
       "TLS context");
  return Context;
}

/// Answers requests until the client goes.
void Serve(SSL_CTX* Context, int Socket) {
  const int AtOnce = 1;
  setsockopt(Socket, IPPROTO_TCP, TCP_NODELAY, &AtOnce, sizeof AtOnce);
  const std::unique_ptr<SSL, TFree<SSL_free>> Connection(SSL_new(Context));
  SSL_set_fd(Connection.get(), Socket);
  std::vector<char> Buffer(1 << 16);
  std::string Head;
  bool IsOpen = SSL_accept(Connection.get()) == 1;
  while (IsOpen) {
    const int Count = SSL_read(Connection.get(), Buffer.data(), static_cast<int>(Buffer.size()));
    if (Count <= 0) break;
    Head.append(Buffer.data(), static_cast<std::size_t>(Count));
    const std::size_t End = Head.find("\r\n\r\n");
    if (End == std::string::npos) continue;
    const std::size_t Length = Head.find("Content-Length: ");
    std::size_t Left = Length < End ? std::stoul(Head.substr(Length + 16)) : 0;
    for (Left -= Head.size() - End - 4; Left > 0 && IsOpen;) {
      const int More = SSL_read(Connection.get(), Buffer.data(), static_cast<int>(Buffer.size()));
      IsOpen = More > 0;
      if (IsOpen) Left -= static_cast<std::size_t>(More);
    }
    const std::string_view Body = Head.find(" /auth/token ") < End
                                      ? R"({"access_token":"a-token-of-some-length","expires_in":"36000"})"
                                      : R"({"status":"ok","message":"The service is well","processed":true})";
    const std::string Answer =
        "HTTP/1.1 200 OK\r\nContent-Type: application/json\r\nContent-Length: " + std::to_string(Body.size()) +
        "\r\n\r\n" + std::string(Body);
    IsOpen = IsOpen && SSL_write(Connection.get(), Answer.data(), static_cast<int>(Answer.size())) > 0;
    Head.clear();
  }
  close(Socket);
}

/// The child's life: ends when the other end of the life line is closed. It stays on the core that is measured: one
/// that has to be woken elsewhere answers now soon, now late, and not the same to each of two connections.
[[noreturn]] void Live(SSL_CTX* Context, int Listener, int LifeLine) {
  std::signal(SIGPIPE, SIG_IGN);
  pollfd Waiting[] = {{Listener, POLLIN, 0}, {LifeLine, POLLIN, 0}};
  while (poll(Waiting, 2, -1) > 0 && Waiting[1].revents == 0) {
    const int Socket = accept(Listener, nullptr, nullptr);
    if (Socket >= 0) std::thread(Serve, Context, Socket).detach();
  }
  _exit(0);
}

}  // namespace

TLocalService::TLocalService(const std::string& HostName, const std::string& CAFile) {
  const auto Context = MakeContext(HostName, CAFile);
  const int Listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in Address{.sin_family = AF_INET, .sin_port = 0, .sin_addr = {htonl(INADDR_LOOPBACK)}, .sin_zero = {}};
  socklen_t Size = sizeof Address;
  const auto Any = reinterpret_cast<sockaddr*>(&Address);
  Need(!bind(Listener, Any, Size) && !listen(Listener, 16) && !getsockname(Listener, Any, &Size), "listen");
  FPort = ntohs(Address.sin_port);
  int LifeLine[2];
  Need(pipe2(LifeLine, O_CLOEXEC) == 0, "pipe");
  FProcess = fork();
  Need(FProcess >= 0, "fork");
  if (FProcess == 0) {
    close(LifeLine[1]);
    Live(Context.get(), Listener, LifeLine[0]);
  }
  close(LifeLine[0]);
  close(Listener);
  FLifeLine = LifeLine[1];
}

TLocalService::~TLocalService() {
  close(FLifeLine);
  waitpid(FProcess, nullptr, 0);
}

}  // namespace bench
