#include "fault_server.h"

#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <openssl/pem.h>
#include <openssl/ssl.h>
#include <openssl/x509v3.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace oxSuperAPI::tests {

namespace {

template <auto Free>
struct TFree {
  template <class Object>
  void operator()(Object* Pointer) const {
    Free(Pointer);
  }
};
using TKey = std::unique_ptr<EVP_PKEY, TFree<EVP_PKEY_free>>;
using TCertificate = std::unique_ptr<X509, TFree<X509_free>>;
using TContext = std::unique_ptr<SSL_CTX, TFree<SSL_CTX_free>>;
using TConnection = std::unique_ptr<SSL, TFree<SSL_free>>;

void Require(bool Condition, const char* What) {
  if (!Condition) throw std::runtime_error(std::string("Fault server: ") + What);
}

void AddExtension(X509* Certificate, int Kind, const std::string& Value) {
  X509_EXTENSION* const Extension = X509V3_EXT_conf_nid(nullptr, nullptr, Kind, Value.c_str());
  Require(Extension, "extension");
  X509_add_ext(Certificate, Extension, -1);
  X509_EXTENSION_free(Extension);
}

/// Issued by `Issuer`, or by itself as an authority.
TCertificate MakeCertificate(const TServerOptions& Options, EVP_PKEY* Key, X509* Issuer, EVP_PKEY* IssuerKey) {
  TCertificate Result(X509_new());
  X509* const Certificate = Result.get();
  X509_set_version(Certificate, 2);
  ASN1_INTEGER_set(X509_get_serialNumber(Certificate), Issuer ? 2 : 1);
  X509_gmtime_adj(X509_getm_notBefore(Certificate), (Issuer ? Options.ValidFromDay : -30) * 86'400L);
  X509_gmtime_adj(X509_getm_notAfter(Certificate), (Issuer ? Options.ValidToDay : 30) * 86'400L);
  X509_set_pubkey(Certificate, Key);
  const std::string Name = Issuer ? Options.Name : "Test authority";
  X509_NAME_add_entry_by_txt(X509_get_subject_name(Certificate), "CN", MBSTRING_UTF8,
                             reinterpret_cast<const unsigned char*>(Name.c_str()), -1, -1, 0);
  X509_set_issuer_name(Certificate, X509_get_subject_name(Issuer ? Issuer : Certificate));
  if (Issuer)
    AddExtension(Certificate, NID_subject_alt_name, "DNS:" + Options.Name);
  else
    AddExtension(Certificate, NID_basic_constraints, "critical,CA:TRUE");
  Require(X509_sign(Certificate, IssuerKey, EVP_sha256()) > 0, "signature");
  return Result;
}

}  // namespace

struct TFaultServer::TTLS {
  TContext Context;
};

TFaultServer::TFaultServer(std::vector<TStep> Steps, TServerOptions Options)
    : FSteps(std::move(Steps)), FTLS(std::make_unique<TTLS>()) {
  const TKey AuthorityKey(EVP_EC_gen("P-256")), Key(EVP_EC_gen("P-256"));
  Require(AuthorityKey && Key, "keys");
  const TCertificate Authority = MakeCertificate(Options, AuthorityKey.get(), nullptr, AuthorityKey.get());
  const TCertificate Own = MakeCertificate(Options, Key.get(), Authority.get(), AuthorityKey.get());

  std::string Path = (std::filesystem::temp_directory_path() / "fault_server_ca_XXXXXX").string();
  const int Descriptor = mkstemp(Path.data());
  Require(Descriptor >= 0, "file for the authority");
  FCAFile = Path;
  std::FILE* const File = fdopen(Descriptor, "w");
  PEM_write_X509(File, Authority.get());
  std::fclose(File);

  FTLS->Context.reset(SSL_CTX_new(TLS_server_method()));
  SSL_CTX* const Context = FTLS->Context.get();
  SSL_CTX_set_security_level(Context, 0);
  SSL_CTX_set_max_proto_version(Context, Options.MaxTLSVersion);
  static const unsigned char SessionContext[] = "fault";
  SSL_CTX_set_session_id_context(Context, SessionContext, sizeof SessionContext);
  Require(SSL_CTX_use_certificate(Context, Own.get()) == 1 && SSL_CTX_use_PrivateKey(Context, Key.get()) == 1,
          "certificate");

  FListener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in Address{};
  Address.sin_family = AF_INET;
  Address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t Size = sizeof Address;
  Require(bind(FListener, reinterpret_cast<sockaddr*>(&Address), Size) == 0 && listen(FListener, 64) == 0 &&
              getsockname(FListener, reinterpret_cast<sockaddr*>(&Address), &Size) == 0,
          "listen");
  FPort = ntohs(Address.sin_port);
  FAcceptor = std::thread([this] {
    // Only here: a client that dies of SIGPIPE must be seen.
    sigset_t Signals;
    sigemptyset(&Signals);
    sigaddset(&Signals, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &Signals, nullptr);
    Accept();
  });
}

TFaultServer::~TFaultServer() {
  FStopping = true;
  FAcceptor.join();
  for (std::thread& Thread : FThreads) Thread.join();
  close(FListener);
  std::remove(FCAFile.c_str());
}

std::vector<std::string> TFaultServer::Received() const {
  const std::scoped_lock Lock(FMutex);
  return FReceived;
}

TStep TFaultServer::NextStep() {
  const std::scoped_lock Lock(FMutex);
  return FNextStep < FSteps.size() ? FSteps[FNextStep++] : TStep{};
}

void TFaultServer::Accept() {
  pollfd Listener{FListener, POLLIN, 0};
  while (!FStopping) {
    if (poll(&Listener, 1, 2) <= 0) continue;
    const int Socket = accept4(FListener, nullptr, nullptr, SOCK_CLOEXEC);
    if (Socket < 0) continue;
    ++FConnections;
    FThreads.emplace_back([this, Socket] { Serve(Socket); });
  }
}

void TFaultServer::Cut(void* Connection, int Socket, TCut Cut) {
  if (Cut == TCut::Farewell) SSL_shutdown(static_cast<SSL*>(Connection));
  const linger Reset{1, 0};
  if (Cut == TCut::Reset) setsockopt(Socket, SOL_SOCKET, SO_LINGER, &Reset, sizeof Reset);
}

void TFaultServer::Serve(int Socket) {
  const timeval Patience{5, 0};
  setsockopt(Socket, SOL_SOCKET, SO_RCVTIMEO, &Patience, sizeof Patience);
  setsockopt(Socket, SOL_SOCKET, SO_SNDTIMEO, &Patience, sizeof Patience);
  const int AtOnce = 1;
  setsockopt(Socket, IPPROTO_TCP, TCP_NODELAY, &AtOnce, sizeof AtOnce);
  const TConnection Connection(SSL_new(FTLS->Context.get()));
  SSL_set_fd(Connection.get(), Socket);
  for (bool IsFirst = true; ServeRequest(Connection.get(), Socket, IsFirst);) IsFirst = false;
  close(Socket);
}

bool TFaultServer::ServeRequest(void* Pointer, int Socket, bool IsFirst) {
  SSL* const Connection = static_cast<SSL*>(Pointer);
  TStep Step;
  const auto IsCut = [&](TStage Stage) {
    if (Step.Stage == Stage) Cut(Connection, Socket, Step.Cut);
    return Step.Stage == Stage;
  };
  if (IsFirst) {
    Step = NextStep();
    if (IsCut(TStage::BeforeHandshake) || SSL_accept(Connection) != 1) return false;
    FResumed += SSL_session_reused(Connection);
    if (IsCut(TStage::AfterHandshake)) return false;
  }
  // Waits in small portions, so that the server can be stopped.
  for (pollfd Wait{Socket, POLLIN, 0}; SSL_pending(Connection) == 0 && poll(&Wait, 1, 2) == 0;)
    if (FStopping) return false;

  std::string Request;
  char Byte = 0;
  while (!Request.ends_with("\r\n\r\n")) {
    if (SSL_read(Connection, &Byte, 1) != 1) return false;
    if (Request.empty()) ++FRequests;
    Request += Byte;
  }
  if (!IsFirst) Step = NextStep();
  if (IsCut(TStage::AfterHeaders)) return false;

  const std::size_t Length = Request.find("Content-Length: ");
  std::size_t Left = Length == std::string::npos ? 0 : std::strtoul(Request.c_str() + Length + 16, nullptr, 10);
  for (std::vector<char> Buffer(16'384); Left > 0;) {
    const int Count = SSL_read(Connection, Buffer.data(), static_cast<int>(std::min(Left, Buffer.size())));
    if (Count <= 0) return false;
    Request.append(Buffer.data(), static_cast<std::size_t>(Count));
    Left -= static_cast<std::size_t>(Count);
  }
  {
    const std::scoped_lock Lock(FMutex);
    FReceived.push_back(Request);
  }
  if (IsCut(TStage::AfterRequest)) return false;
  for (int Waited = 0; Waited < Step.DelayMilliseconds && !FStopping; Waited += 10)
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  if (SSL_write(Connection, Step.Answer.data(), static_cast<int>(Step.Answer.size())) <= 0) return false;
  return !IsCut(TStage::AfterAnswer);
}

}  // namespace oxSuperAPI::tests
