#pragma once

#include "../reference/fault_server.h"

namespace oxSuperAPI::tests {

/// What a proxy does with a CONNECT that it likes.
struct TProxyOptions {
  std::string Credentials = {};  ///< base64 of "user:password"; "" asks for none
  std::string Answer = {};       ///< instead of a tunnel, after which the connection ends
  bool Hangs = false;            ///< no answer at all, until the proxy is stopped
  int Target = 0;                ///< port on loopback to which every tunnel leads
  bool IsTLS = false;            ///< the way to it is TLS, with a certificate as `Plan` says
  TChainPlan Plan = {};
};

/// A proxy on loopback that knows CONNECT alone and keeps what it was asked, one head a connection.
class TConnectProxy {
 public:
  explicit TConnectProxy(TProxyOptions Options) : FOptions(std::move(Options)) {
    const TServerIdentity Identity = MakeIdentity(FOptions.Plan);
    Authority = Identity.Trusted;
    SSL_CTX_set_security_level(FContext.get(), 0);
    Require(SSL_CTX_use_certificate(FContext.get(), Identity.Leaf.get()) &&
                SSL_CTX_use_PrivateKey(FContext.get(), Identity.Key.get()),
            "proxy");
    FLoopback.Start([this](int Socket) { Serve(Socket); });
  }

  int Port() const { return FLoopback.Port(); }
  std::vector<std::string> Asked() const {
    const std::scoped_lock Lock(FMutex);
    return FAsked;
  }
  std::string Authority;  ///< PEM of who vouches for it

 private:
  /// Bytes of one side, in clear or TLS.
  struct TEnd {
    int Socket = -1;
    SSL* TLS = nullptr;
    bool HasMore() const { return TLS && SSL_pending(TLS) > 0; }
    int Read(char* Out, int Room) const {
      return TLS ? SSL_read(TLS, Out, Room) : static_cast<int>(recv(Socket, Out, static_cast<std::size_t>(Room), 0));
    }
    void Write(const char* Data, int Count) const {
      if (TLS)
        SSL_write(TLS, Data, Count);
      else
        send(Socket, Data, static_cast<std::size_t>(Count), MSG_NOSIGNAL);
    }
  };

  void Serve(int Socket) {
    const std::unique_ptr<SSL, TFree<SSL_free>> TLS(FOptions.IsTLS ? SSL_new(FContext.get()) : nullptr);
    if (TLS) SSL_set_fd(TLS.get(), Socket);
    if (!TLS || SSL_accept(TLS.get()) == 1) Answer({Socket, TLS.get()});
  }

  void Answer(TEnd Client) {
    std::string Head;
    for (char Byte = 0; !Head.ends_with("\r\n\r\n"); Head += Byte)
      if (Client.Read(&Byte, 1) != 1) return;
    {
      const std::scoped_lock Lock(FMutex);
      FAsked.push_back(Head);
    }
    while (FOptions.Hangs && !FLoopback.IsStopping()) std::this_thread::sleep_for(std::chrono::milliseconds(2));
    const auto Say = [&](const std::string& Text) { Client.Write(Text.data(), static_cast<int>(Text.size())); };
    if (!FOptions.Credentials.empty() &&
        Head.find("Proxy-Authorization: Basic " + FOptions.Credentials + "\r\n") == std::string::npos)
      return Say("HTTP/1.1 407 Who\r\nProxy-Authenticate: Basic realm=\"x\"\r\nContent-Length: 0\r\n\r\n");
    if (FOptions.Hangs || !FOptions.Answer.empty()) return Say(FOptions.Answer);

    const TEnd Server{socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)};
    sockaddr_in Address{.sin_family = AF_INET,
                        .sin_port = htons(static_cast<std::uint16_t>(FOptions.Target)),
                        .sin_addr = {htonl(INADDR_LOOPBACK)},
                        .sin_zero = {}};
    if (connect(Server.Socket, reinterpret_cast<sockaddr*>(&Address), sizeof Address) == 0) {
      Say("HTTP/1.1 200 Yes\r\n\r\n");
      while (Pass(Client, Server)) continue;
    }
    close(Server.Socket);
  }

  bool Pass(TEnd Client, TEnd Server) const {
    pollfd Ends[] = {{Client.Socket, POLLIN, 0}, {Server.Socket, POLLIN, 0}};
    if (!Client.HasMore() && poll(Ends, 2, 2) == 0) return !FLoopback.IsStopping();
    char Buffer[4096];
    for (const auto& [From, To, Ready] : {std::tuple{Client, Server, Client.HasMore() || Ends[0].revents != 0},
                                          std::tuple{Server, Client, Ends[1].revents != 0}}) {
      if (!Ready) continue;
      const int Count = From.Read(Buffer, sizeof Buffer);
      if (Count <= 0) return false;
      To.Write(Buffer, Count);
    }
    return true;
  }

  const TProxyOptions FOptions;
  mutable std::mutex FMutex;
  std::vector<std::string> FAsked;
  std::unique_ptr<SSL_CTX, TFree<SSL_CTX_free>> FContext{SSL_CTX_new(TLS_server_method())};
  TLoopback FLoopback;
};

}  // namespace oxSuperAPI::tests
