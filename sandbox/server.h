#pragma once

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/posix/stream_descriptor.hpp>
#include <boost/asio/signal_set.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/asio/steady_timer.hpp>
#include <list>
#include <thread>

#include "certificates.h"
#include "connection.h"
#include "services.h"

namespace sandbox {

/// Listens on 127.0.0.1 and gives every connection a thread.
class Server {
 public:
  /// Binds the port. Throws when it is taken.
  Server(Services& services, const Certificates& certificates);

  unsigned short Port() const { return acceptor_.local_endpoint().port(); }

  /// Returns after SIGINT, SIGTERM, the end of the lifetime or of standard input, whichever was asked for; every
  /// connection is closed by then.
  void Run();

 private:
  struct Worker {
    Worker(boost::asio::ip::tcp::socket socket, boost::asio::ssl::context& tls, Services& services,
           std::uint64_t number)
        : connection(std::move(socket), tls, services, number) {}

    Connection connection;
    std::atomic<bool> done{false};
    std::jthread thread;
  };

  void Accept();
  void WatchStandardInput();
  void ForgetFinished();

  Services& services_;
  boost::asio::io_context io_;
  boost::asio::ssl::context tls_;
  boost::asio::ip::tcp::acceptor acceptor_;
  boost::asio::signal_set signals_;
  boost::asio::steady_timer lifetime_;
  boost::asio::posix::stream_descriptor input_;
  char ignored_[256];
  std::list<Worker> workers_;
  std::uint64_t accepted_ = 0;
};

}  // namespace sandbox
