#pragma once

#include <arpa/inet.h>
#include <poll.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <functional>
#include <stdexcept>
#include <thread>
#include <utility>
#include <vector>

namespace oxSuperAPI::tests {

/// A listening socket on loopback, with a thread that accepts and one for each connection. It is the last member of
/// its server, so that no thread outlives what it uses.
class TLoopback {
 public:
  TLoopback() : FSocket(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in Address{.sin_family = AF_INET, .sin_port = 0, .sin_addr = {htonl(INADDR_LOOPBACK)}, .sin_zero = {}};
    socklen_t Size = sizeof Address;
    const auto Any = reinterpret_cast<sockaddr*>(&Address);
    if (bind(FSocket, Any, Size) || listen(FSocket, 64) || getsockname(FSocket, Any, &Size))
      throw std::runtime_error("Cannot listen on loopback");
    FPort = ntohs(Address.sin_port);
  }
  ~TLoopback() {
    FStopping = true;
    if (FAcceptor.joinable()) FAcceptor.join();
    for (std::thread& Thread : FThreads) Thread.join();
    close(FSocket);
  }

  /// `Serve` has each connection on a thread of its own; it must end soon after IsStopping.
  void Start(std::function<void(int Socket)> Serve) {
    FServe = std::move(Serve);
    FAcceptor = std::thread([this] { Accept(); });
  }
  int Port() const { return FPort; }
  const std::atomic<bool>& IsStopping() const { return FStopping; }

 private:
  void Accept() {
    sigset_t Signals;  // blocked only here: a client that dies of SIGPIPE must be seen
    sigemptyset(&Signals);
    sigaddset(&Signals, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &Signals, nullptr);
    for (pollfd Listener{FSocket, POLLIN, 0}; !FStopping;) {
      if (poll(&Listener, 1, 2) <= 0) continue;
      const int Socket = accept4(FSocket, nullptr, nullptr, SOCK_CLOEXEC);
      if (Socket < 0) continue;
      const timeval Patience{5, 0};
      setsockopt(Socket, SOL_SOCKET, SO_RCVTIMEO, &Patience, sizeof Patience);
      setsockopt(Socket, SOL_SOCKET, SO_SNDTIMEO, &Patience, sizeof Patience);
      FThreads.emplace_back([this, Socket] {
        FServe(Socket);
        close(Socket);
      });
    }
  }

  std::function<void(int)> FServe;
  const int FSocket;
  int FPort = 0;
  std::atomic<bool> FStopping = false;
  std::vector<std::thread> FThreads;
  std::thread FAcceptor;
};

}  // namespace oxSuperAPI::tests
