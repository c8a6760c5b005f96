#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

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
  std::string Name = "api.example";  ///< in the certificate
  int ValidFromDay = -1;             ///< relative to now
  int ValidToDay = 1;
  int MaxTLSVersion = 0;  ///< of OpenSSL; 0 is any
};

/// An HTTPS server on loopback that counts requests and breaks connections. Every request, and every connection that is
/// cut before its first request, takes the next step; when none is left the answer is good, so that a request that is
/// sent again succeeds and shows in the count.
class TFaultServer {
 public:
  explicit TFaultServer(std::vector<TStep> Steps = {}, TServerOptions Options = {});
  ~TFaultServer();

  int Port() const { return FPort; }
  /// PEM file with the certificate of the server's own authority.
  const std::string& CAFile() const { return FCAFile; }
  int Connections() const { return FConnections; }
  int ResumedSessions() const { return FResumed; }
  /// Requests of which at least one byte arrived.
  int Requests() const { return FRequests; }
  /// Requests as they came, headers and body.
  std::vector<std::string> Received() const;

 private:
  struct TTLS;
  void Accept();
  void Serve(int Socket);
  bool ServeRequest(void* Connection, int Socket, bool IsFirst);
  TStep NextStep();
  void Cut(void* Connection, int Socket, TCut Cut);

  mutable std::mutex FMutex;
  std::vector<TStep> FSteps;
  std::vector<std::string> FReceived;
  std::vector<std::thread> FThreads;
  std::size_t FNextStep = 0;
  std::atomic<int> FConnections = 0, FResumed = 0, FRequests = 0;
  std::atomic<bool> FStopping = false;
  std::unique_ptr<TTLS> FTLS;
  std::string FCAFile;
  int FListener = -1, FPort = 0;
  std::thread FAcceptor;
};

}  // namespace oxSuperAPI::tests
