#include "server.h"

#include <unistd.h>

#include <csignal>
#include <stdexcept>

namespace sandbox {

namespace asio = boost::asio;
using asio::ip::tcp;
using boost::system::error_code;

Server::Server(Services& services, const Certificates& certificates)
    : services_(services),
      tls_(asio::ssl::context::tls_server),
      acceptor_(io_, tcp::endpoint(asio::ip::address_v4::loopback(), services.options.port)),
      signals_(io_, SIGINT, SIGTERM),
      lifetime_(io_),
      input_(io_) {
  tls_.set_options(asio::ssl::context::no_tlsv1 | asio::ssl::context::no_tlsv1_1);
  tls_.use_certificate_chain(asio::buffer(certificates.server + certificates.authority));
  tls_.use_private_key(asio::buffer(certificates.serverKey), asio::ssl::context::pem);
  if (services_.options.parentPipe) {
    error_code error;
    input_.assign(::dup(STDIN_FILENO), error);
    if (error) throw std::runtime_error("--parent-pipe needs a pipe as standard input");
  }
}

void Server::Run() {
  signals_.async_wait([this](error_code, int) { io_.stop(); });
  if (services_.options.lifetime.count() > 0) {
    lifetime_.expires_after(services_.options.lifetime);
    lifetime_.async_wait([this](error_code) { io_.stop(); });
  }
  if (services_.options.parentPipe) WatchStandardInput();
  Accept();
  io_.run();
  acceptor_.close();
  for (Worker& worker : workers_) {
    worker.thread.request_stop();
    worker.connection.Abort();
  }
  workers_.clear();  // joins the threads
}

void Server::Accept() {
  acceptor_.async_accept([this](error_code error, tcp::socket socket) {
    ForgetFinished();
    if (!error) {
      Worker& worker = workers_.emplace_back(std::move(socket), tls_, services_, ++accepted_);
      worker.thread = std::jthread([&worker](std::stop_token stop) {
        worker.connection.Serve(std::move(stop));
        worker.done = true;
      });
    }
    Accept();
  });
}

void Server::WatchStandardInput() {
  input_.async_read_some(asio::buffer(ignored_), [this](error_code error, std::size_t) {
    if (error) {
      io_.stop();
    } else {
      WatchStandardInput();
    }
  });
}

void Server::ForgetFinished() {
  workers_.remove_if([](const Worker& worker) { return worker.done.load(); });
}

}  // namespace sandbox
