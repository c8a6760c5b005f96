#include "connection.h"

#include <sys/socket.h>

#include <boost/asio/write.hpp>
#include <condition_variable>
#include <iostream>

#include "control.h"
#include "http_time.h"
#include "router.h"

namespace sandbox {
namespace {

namespace asio = boost::asio;
using asio::ip::tcp;
using boost::beast::error_code;

constexpr std::uint64_t kLargestBody = 256u << 20;
constexpr std::uint32_t kLargestHead = 64u << 10;

Received HeadOf(const Request& request) {
  Received received;
  received.method = request.method_string();
  received.target = request.target();
  for (const auto& field : request) received.headers.emplace_back(field.name_string(), field.value());
  return received;
}

Answer RunEndpoint(const Request& request, const Access& access, Services& services) {
  try {
    return Route(request, access, services);
  } catch (const std::exception& error) {
    return ErrorAnswer(500, "SANDBOX_FAILURE", error.what());
  }
}

std::string Head(const Answer& answer, const std::string& length, bool keepAlive) {
  std::string head = "HTTP/1.1 " + std::to_string(answer.status) + " " +
                     std::string(View(http::obsolete_reason(static_cast<http::status>(answer.status)))) + "\r\n";
  for (const auto& [name, value] : answer.headers) head += name + ": " + value + "\r\n";
  return head + length + (keepAlive ? "" : "Connection: close\r\n") + "\r\n";
}

std::string Length(std::size_t size) {
  return "Content-Length: " + std::to_string(size) + "\r\n";
}

/// Whether the bytes that came are no request this server takes; otherwise an error means that the connection is gone.
bool IsRefusal(error_code error) {
  return error && error.category() == http::make_error_code(http::error::body_limit).category() &&
         error != http::error::partial_message;
}

}  // namespace

Connection::Connection(tcp::socket socket, asio::ssl::context& tls, Services& services, std::uint64_t number)
    : stream_(std::move(socket), tls), services_(services), number_(number) {}

void Connection::Serve(std::stop_token stop) {
  stop_ = std::move(stop);
  try {
    if (Open())
      while (ServeOne()) {
      }
  } catch (const std::exception& error) {
    std::cerr << "beam-sandbox: connection " << number_ << ": " << error.what() << std::endl;
  }
  CloseSocket();
}

void Connection::Abort() {
  const std::lock_guard lock(closing_);
  if (stream_.next_layer().is_open()) ::shutdown(stream_.next_layer().native_handle(), SHUT_RDWR);
}

/// TLS, unless a preset says otherwise.
bool Connection::Open() {
  error_code error;
  stream_.next_layer().set_option(tcp::no_delay(true), error);
  if (const std::optional<Preset> preset = services_.presets.TakeForConnection()) {
    if (preset->fault == Fault::resetInHandshake) {
      char hello[16];
      stream_.next_layer().read_some(asio::buffer(hello), error);
    }
    Wait(preset->delay);
    return Reset();
  }
  stream_.handshake(asio::ssl::stream_base::server, error);
  return !error;
}

/// True when the connection stays open for another request.
bool Connection::ServeOne() {
  error_code error;
  http::request_parser<http::string_body> parser;
  parser.body_limit(kLargestBody);
  parser.header_limit(kLargestHead);
  http::read_header(stream_, buffer_, parser, error);
  if (error == http::error::end_of_stream) return CloseOrderly();
  if (IsRefusal(error)) return Refuse(error);
  if (error) return false;

  const Request& request = parser.get();
  const std::string_view target = View(request.target());
  const bool control = IsControl(target);
  Preset preset;
  Access access;
  std::uint64_t id = 0;
  if (!control) {
    access = services_.tokens.Check(View(request[http::field::authorization]));
    Received received = HeadOf(request);
    received.time = IsoTime(services_.clock.Now());
    received.connection = number_;
    received.onConnection = ++requests_;
    received.tlsResumed = SSL_session_reused(stream_.native_handle()) == 1;
    if (access.errorCode.empty()) received.channel = Name(access.channel);
    id = services_.journal.Begin(std::move(received));
    preset = services_.presets.TakeForRequest(View(request.method_string()), target).value_or(Preset{});
  }

  if (preset.fault == Fault::resetBeforeRead) {
    services_.journal.Answered(id, 0, Name(preset.fault));
    Wait(preset.delay);
    return Reset();
  }
  if (boost::beast::iequals(request[http::field::expect], "100-continue") && !parser.is_done() &&
      !Write("HTTP/1.1 100 Continue\r\n\r\n"))
    return false;
  http::read(stream_, buffer_, parser, error);
  if (IsRefusal(error)) return Refuse(error);
  if (error) return false;
  if (control) return Send(Control(request, services_), {}, request.keep_alive());

  services_.journal.BodyRead(id, request.body());
  Answer answer;
  if (preset.handle) answer = RunEndpoint(request, access, services_);
  answer.headers.emplace_back("Date", HttpTime(services_.clock.Now()));
  Override(answer, preset);
  const bool silent = preset.fault == Fault::resetAfterRead || preset.fault == Fault::closeAfterRead;
  services_.journal.Answered(id, silent ? 0 : answer.status, Name(preset.fault));
  if (services_.options.verbose)
    std::cerr << request.method_string() << " " << target << " " << answer.status << " " << Name(preset.fault)
              << std::endl;
  if (!Wait(preset.delay)) return false;
  return Send(answer, preset, request.keep_alive());
}

/// Sends the answer as the preset has it; true when the connection stays open.
bool Connection::Send(const Answer& answer, const Preset& preset, bool keepAlive) {
  const std::string& body = answer.body;
  const std::string_view part =
      std::string_view(body).substr(0, std::min(body.size(), preset.sendBytes.value_or(body.size() / 2)));
  switch (preset.fault) {
    case Fault::resetAfterRead:
      return Reset();
    case Fault::closeAfterRead:
      return CloseOrderly();
    case Fault::resetMidResponse:
      Write(Head(answer, Length(body.size()), keepAlive) + std::string(part));
      Wait(std::chrono::milliseconds(50));  // a reset overtakes bytes that the client has not fetched yet
      return Reset();
    case Fault::truncate:
      Write(Head(answer, Length(body.size() + (part.size() == body.size())), keepAlive) + std::string(part));
      return CloseOrderly();
    case Fault::cutWithoutLength:
      Write(Head(answer, "", false) + std::string(part));
      return CloseSocket();
    case Fault::chunkedCut: {
      char size[20];
      std::snprintf(size, sizeof size, "%zx\r\n", part.size());
      Write(Head(answer, "Transfer-Encoding: chunked\r\n", keepAlive) +
            (part.empty() ? "" : size + std::string(part) + "\r\n"));
      return CloseOrderly();
    }
    case Fault::garbage:
      Write(body.empty() ? "\x16\x03 this is not the protocol you are looking for\r\n\r\n" : body);
      return CloseOrderly();
    case Fault::drip:
      if (!Drip(Head(answer, Length(body.size()), keepAlive) + body, preset)) return false;
      return keepAlive || CloseOrderly();
    case Fault::closeAfterResponse:
      Write(Head(answer, Length(body.size()), true) + body);
      return CloseOrderly();
    default:
      break;
  }
  return Write(Head(answer, Length(body.size()), keepAlive) + body) && (keepAlive || CloseOrderly());
}

bool Connection::Refuse(error_code error) {
  const bool tooLarge = error == http::error::body_limit;
  return Send(tooLarge ? ErrorAnswer(413, "BODY_TOO_LARGE", "The body is larger than 256 MB")
                       : ErrorAnswer(400, "HTTP_MALFORMED", error.message()),
              {}, false);
}

bool Connection::Write(std::string_view bytes) {
  error_code error;
  asio::write(stream_, asio::buffer(bytes.data(), bytes.size()), error);
  return !error;
}

bool Connection::Drip(std::string_view bytes, const Preset& preset) {
  while (!bytes.empty()) {
    const std::size_t size = std::min(bytes.size(), preset.dripBytes);
    if (!Write(bytes.substr(0, size)) || !Wait(preset.dripPause)) return false;
    bytes.remove_prefix(size);
  }
  return true;
}

/// False when the sandbox stops meanwhile.
bool Connection::Wait(std::chrono::milliseconds time) {
  if (time.count() == 0) return true;
  std::mutex mutex;
  std::condition_variable_any never;
  std::unique_lock lock(mutex);
  never.wait_for(lock, stop_, time, [] { return false; });
  return !stop_.stop_requested();
}

/// A TCP reset instead of an end.
bool Connection::Reset() {
  error_code error;
  stream_.next_layer().set_option(asio::socket_base::linger(true, 0), error);
  return CloseSocket();
}

/// The end mark of TLS, then the end of the connection; does not wait for the client's own mark.
bool Connection::CloseOrderly() {
  error_code error;
  ::shutdown(stream_.next_layer().native_handle(), SHUT_RD);
  stream_.shutdown(error);
  return CloseSocket();
}

bool Connection::CloseSocket() {
  const std::lock_guard lock(closing_);
  error_code error;
  stream_.next_layer().close(error);
  return false;
}

}  // namespace sandbox
