#pragma once

#include <netinet/tcp.h>
#include <openssl/ssl.h>

#include <filesystem>
#include <memory>
#include <mutex>

#include "../support/certificates.h"
#include "../support/loopback.h"

namespace oxSuperAPI::tests {

/// Where a server ends a connection.
enum class TStage : std::uint8_t { Never, BeforeHandshake, AfterHandshake, AfterHeaders, AfterRequest, AfterAnswer };
/// How: with a TLS farewell, with the socket's end only, or with a reset.
enum class TCut : std::uint8_t { Farewell, End, Reset };

inline const std::string GoodAnswer = "HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\nok";

/// What the server does with one request, or with the connection that should have brought it.
struct TStep {
  TStage Stage = TStage::Never;
  TCut Cut = TCut::End;
  std::string Answer = GoodAnswer;
  int DelayMilliseconds = 0;  ///< before the answer
};

struct TServerOptions {
  TChainPlan Plan = {};
  int MaxTLSVersion = 0;        ///< of OpenSSL; 0 is any
  bool WantsClientKey = false;  ///< a client without a certificate of the server's own authority is refused
};

/// An HTTPS server on loopback that counts requests and breaks connections. Every request, and every connection that is
/// cut before its first request, takes the next step; when none is left the answer is good, so that a request that is
/// sent again succeeds and shows in the count.
class TFaultServer {
 public:
  explicit TFaultServer(std::vector<TStep> Steps = {}, TServerOptions Options = {}) : FSteps(std::move(Steps)) {
    const TServerIdentity Identity = MakeIdentity(Options.Plan);
    CAFile = (std::filesystem::temp_directory_path() / "fault_server_ca_XXXXXX").string();
    const int Descriptor = mkstemp(CAFile.data());
    Require(Descriptor >= 0, "file for the authority");
    std::FILE* const File = fdopen(Descriptor, "w");
    std::fputs(Identity.Trusted.c_str(), File);
    std::fclose(File);
    SSL_CTX* const Context = FContext.get();
    SSL_CTX_set_security_level(Context, 0);
    SSL_CTX_set_max_proto_version(Context, Options.MaxTLSVersion);
    SSL_CTX_set_session_id_context(Context, reinterpret_cast<const unsigned char*>("fault"), 5);
    Require(
        SSL_CTX_use_certificate(Context, Identity.Leaf.get()) && SSL_CTX_use_PrivateKey(Context, Identity.Key.get()),
        "certificate");
    for (const TCertificatePointer& Certificate : Identity.Shown) SSL_CTX_add1_chain_cert(Context, Certificate.get());
    if (Options.WantsClientKey) {
      SSL_CTX_load_verify_file(Context, CAFile.c_str());
      SSL_CTX_set_verify(Context, SSL_VERIFY_PEER | SSL_VERIFY_FAIL_IF_NO_PEER_CERT, nullptr);
    }
    FLoopback.Start([this](int Socket) { Serve(Socket); });
  }
  ~TFaultServer() { std::remove(CAFile.c_str()); }

  int Port() const { return FLoopback.Port(); }
  /// Requests as they came, headers and body.
  std::vector<std::string> Received() const {
    const std::scoped_lock Lock(FMutex);
    return FReceived;
  }

  std::string CAFile;  ///< PEM file with the certificate of the server's own authority
  std::atomic<int> Connections = 0, ResumedSessions = 0;
  std::atomic<int> Requests = 0;  ///< of which at least one byte arrived

 private:
  TStep NextStep() {
    const std::scoped_lock Lock(FMutex);
    return FNextStep < FSteps.size() ? FSteps[FNextStep++] : TStep{};
  }

  void Serve(int Socket) {
    ++Connections;
    const int AtOnce = 1;
    setsockopt(Socket, IPPROTO_TCP, TCP_NODELAY, &AtOnce, sizeof AtOnce);
    const std::unique_ptr<SSL, TFree<SSL_free>> Connection(SSL_new(FContext.get()));
    SSL_set_fd(Connection.get(), Socket);
    for (bool IsFirst = true; ServeRequest(Connection.get(), Socket, IsFirst);) IsFirst = false;
  }

  /// Reads on until the client hangs up, too: what was told it last is lost with a connection that is reset.
  bool HangUp(int Socket) {
    shutdown(Socket, SHUT_WR);
    char Byte = 0;
    for (pollfd Wait{Socket, POLLIN, 0};
         !FLoopback.IsStopping() && (poll(&Wait, 1, 2) == 0 || read(Socket, &Byte, 1) > 0);) {
    }
    return false;
  }

  bool ServeRequest(SSL* Connection, int Socket, bool IsFirst) {
    TStep Step;
    const auto IsCut = [&](TStage Stage) {
      if (Step.Stage != Stage) return false;
      if (Step.Cut == TCut::Farewell) SSL_shutdown(Connection);
      const linger Reset{1, 0};
      if (Step.Cut == TCut::Reset) setsockopt(Socket, SOL_SOCKET, SO_LINGER, &Reset, sizeof Reset);
      return true;
    };
    if (IsFirst) {
      Step = NextStep();
      if (IsCut(TStage::BeforeHandshake)) return false;
      if (SSL_accept(Connection) != 1) return HangUp(Socket);
      ResumedSessions += SSL_session_reused(Connection);
      if (IsCut(TStage::AfterHandshake)) return false;
    }
    // Waits in small portions, so that the server can be stopped.
    for (pollfd Wait{Socket, POLLIN, 0}; SSL_pending(Connection) == 0 && poll(&Wait, 1, 2) == 0;)
      if (FLoopback.IsStopping()) return false;

    std::string Request;
    for (char Byte = 0; !Request.ends_with("\r\n\r\n"); Request += Byte) {
      if (SSL_read(Connection, &Byte, 1) != 1) return false;
      if (Request.empty()) ++Requests;
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
    for (int Waited = 0; Waited < Step.DelayMilliseconds && !FLoopback.IsStopping(); Waited += 10)
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    if (SSL_write(Connection, Step.Answer.data(), static_cast<int>(Step.Answer.size())) <= 0) return false;
    return !IsCut(TStage::AfterAnswer);
  }

  mutable std::mutex FMutex;
  std::vector<TStep> FSteps;
  std::vector<std::string> FReceived;
  std::size_t FNextStep = 0;
  std::unique_ptr<SSL_CTX, TFree<SSL_CTX_free>> FContext{SSL_CTX_new(TLS_server_method())};
  TLoopback FLoopback;
};

}  // namespace oxSuperAPI::tests
