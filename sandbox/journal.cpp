#include "journal.h"

namespace sandbox {
namespace {

constexpr std::size_t kRequestsKept = 10000;
constexpr std::size_t kLargeBody = 64 << 10;
constexpr std::size_t kLargeBodiesKept = 50;

/// The documents in the journal are text to every reader; bytes that are no UTF-8 would spoil the listing.
std::string AsciiOnly(std::string_view text) {
  std::string plain(text);
  for (char& c : plain)
    if (static_cast<unsigned char>(c) >= 0x80) c = '?';
  return plain;
}

bool IsUtf8(const std::string& text) {
  std::string problem;
  Parse(json::serialize(json::string(text)), problem);
  return problem.empty();
}

json::value ToJson(const Received& received) {
  json::object headers;
  for (const auto& [name, value] : received.headers) headers[AsciiOnly(name)] = AsciiOnly(value);
  return {{"id", received.id},
          {"time", received.time},
          {"connection", received.connection},
          {"onConnection", received.onConnection},
          {"tlsResumed", received.tlsResumed},
          {"method", received.method},
          {"target", AsciiOnly(received.target)},
          {"headers", std::move(headers)},
          {"body", IsUtf8(received.body) ? received.body : AsciiOnly(received.body)},
          {"bodySize", received.bodySize},
          {"complete", received.complete},
          {"channel", received.channel},
          {"status", received.status},
          {"fault", received.fault}};
}

}  // namespace

std::uint64_t Journal::Begin(Received received) {
  const std::lock_guard lock(mutex_);
  received.id = ++lastId_;
  received_.push_back(std::move(received));
  if (received_.size() > kRequestsKept) received_.pop_front();
  return lastId_;
}

void Journal::BodyRead(std::uint64_t id, const std::string& body) {
  const std::lock_guard lock(mutex_);
  Received* received = Find(id);
  if (received == nullptr) return;
  received->body = body.substr(0, kBodyKept);
  received->bodySize = body.size();
  received->complete = true;
  if (received->body.size() <= kLargeBody) return;
  large_.push_back(id);
  if (large_.size() <= kLargeBodiesKept) return;
  if (Received* oldest = Find(large_.front())) oldest->body.clear();
  large_.pop_front();
}

void Journal::Answered(std::uint64_t id, unsigned status, std::string_view fault) {
  const std::lock_guard lock(mutex_);
  Received* received = Find(id);
  if (received == nullptr) return;
  received->status = status;
  received->fault = fault;
}

json::value Journal::ToJson(std::uint64_t since, std::string_view prefix) const {
  const std::lock_guard lock(mutex_);
  json::array requests;
  for (const Received& received : received_)
    if (received.id > since && std::string_view(received.target).starts_with(prefix))
      requests.push_back(sandbox::ToJson(received));
  return {{"count", lastId_ - cleared_}, {"requests", std::move(requests)}};
}

void Journal::Clear() {
  const std::lock_guard lock(mutex_);
  received_.clear();
  large_.clear();
  cleared_ = lastId_;
}

Received* Journal::Find(std::uint64_t id) {
  for (auto newest = received_.rbegin(); newest != received_.rend(); ++newest)
    if (newest->id == id) return &*newest;
  return nullptr;  // cleared meanwhile
}

}  // namespace sandbox
