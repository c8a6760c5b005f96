#pragma once

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <mutex>
#include <optional>
#include <stop_token>

#include "faults.h"
#include "services.h"

namespace sandbox {

/// One client connection, served on its own thread with blocking reads and writes.
class Connection {
 public:
  Connection(boost::asio::ip::tcp::socket socket, boost::asio::ssl::context& tls, Services& services,
             std::uint64_t number);

  /// Serves requests until either side ends the connection. Never throws.
  void Serve(std::stop_token stop);

  /// Makes a blocked read or write of Serve return. For another thread.
  void Abort();

 private:
  using Stream = boost::asio::ssl::stream<boost::asio::ip::tcp::socket>;

  bool Open();
  bool ServeOne();
  bool Send(const Answer& answer, const Preset& preset, bool keepAlive);
  bool Refuse(boost::system::error_code error);
  bool Write(std::string_view bytes);
  bool Drip(std::string_view bytes, const Preset& preset);
  bool Wait(std::chrono::milliseconds time);
  bool Reset();
  bool CloseOrderly();
  bool CloseSocket();

  Stream stream_;
  Services& services_;
  std::uint64_t number_;
  unsigned requests_ = 0;
  boost::beast::flat_buffer buffer_;
  std::stop_token stop_;
  std::mutex closing_;  ///< guards the socket's handle against Abort
};

}  // namespace sandbox
