#include "store.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

#include "json.h"

namespace sandbox {
namespace {

// The names below are the format of the state file: change them only together with "format".
constexpr std::int64_t kFormat = 1;

json::value ToJson(const Customer& customer) {
  return {{"uuid", customer.uuid},
          {"customerNumber", customer.customerNumber},
          {"companyName", customer.companyName},
          {"pinDigest", customer.pinDigest},
          {"clientId", customer.clientId},
          {"secretDigest", customer.secretDigest},
          {"preRegistered", customer.preRegistered},
          {"activated", customer.activated}};
}

Customer CustomerFrom(const json::value& value) {
  Customer customer;
  customer.uuid = TextAt(&value, "uuid");
  customer.customerNumber = TextAt(&value, "customerNumber");
  customer.companyName = TextAt(&value, "companyName");
  customer.pinDigest = TextAt(&value, "pinDigest");
  customer.clientId = TextAt(&value, "clientId");
  customer.secretDigest = TextAt(&value, "secretDigest");
  customer.preRegistered = value.at("preRegistered").as_bool();
  customer.activated = value.at("activated").as_bool();
  return customer;
}

json::value ToJson(const Batch& batch) {
  return {{"processId", batch.processId},
          {"messageId", batch.messageId},
          {"customer", batch.customer},
          {"status", batch.status},
          {"since", batch.since.time_since_epoch().count()},
          {"submitted", batch.submitted.time_since_epoch().count()},
          {"paymentReferenceNumber", batch.paymentReferenceNumber},
          {"totalCents", batch.totalCents},
          {"contentDigest", batch.contentDigest}};
}

Batch BatchFrom(const json::value& value) {
  const auto time = [&](const char* key) { return TimePoint(std::chrono::milliseconds(value.at(key).as_int64())); };
  Batch batch;
  batch.processId = TextAt(&value, "processId");
  batch.messageId = TextAt(&value, "messageId");
  batch.customer = TextAt(&value, "customer");
  batch.status = TextAt(&value, "status");
  batch.since = time("since");
  batch.submitted = time("submitted");
  batch.paymentReferenceNumber = TextAt(&value, "paymentReferenceNumber");
  batch.totalCents = value.at("totalCents").as_int64();
  batch.contentDigest = TextAt(&value, "contentDigest");
  return batch;
}

State StateFrom(const std::string& text) {
  const json::value document = json::parse(text);
  if (document.at("format").as_int64() != kFormat) throw std::runtime_error("unknown format number");
  State state;
  for (const json::value& value : document.at("customers").as_array()) {
    Customer customer = CustomerFrom(value);
    state.customers[customer.uuid] = std::move(customer);
  }
  for (const json::value& value : document.at("batches").as_array()) {
    Batch batch = BatchFrom(value);
    state.batches[batch.processId] = std::move(batch);
  }
  return state;
}

std::string TextFrom(const State& state) {
  json::array customers, batches;
  for (const auto& [uuid, customer] : state.customers) customers.push_back(ToJson(customer));
  for (const auto& [processId, batch] : state.batches) batches.push_back(ToJson(batch));
  const json::value document = {
      {"format", kFormat}, {"customers", std::move(customers)}, {"batches", std::move(batches)}};
  return json::serialize(document) + "\n";
}

/// The old contents or the new ones, never a mixture: also when the process dies in between.
void WriteWhole(const std::string& file, const std::string& text) {
  const std::string fresh = file + ".new";
  ::unlink(fresh.c_str());
  const int descriptor = ::open(fresh.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  bool done = descriptor >= 0;
  for (std::size_t written = 0; done && written < text.size();) {
    const ssize_t count = ::write(descriptor, text.data() + written, text.size() - written);
    if (count < 0 && errno == EINTR) continue;
    done = count > 0;
    if (done) written += static_cast<std::size_t>(count);
  }
  done = done && ::fsync(descriptor) == 0;
  const int error = errno;
  if (descriptor >= 0) ::close(descriptor);
  if (!done) throw std::system_error(error, std::generic_category(), "Cannot write the state file " + fresh);
  if (std::rename(fresh.c_str(), file.c_str()) != 0)
    throw std::system_error(errno, std::generic_category(), "Cannot replace the state file " + file);
}

}  // namespace

Store::Store(std::string file) : file_(std::move(file)) {
  if (file_.empty()) return;
  std::ifstream stream(file_);
  if (!stream) return;  // not there yet; the first change makes it
  try {
    state_ = StateFrom(std::string(std::istreambuf_iterator<char>(stream), {}));
  } catch (const std::exception& error) {
    throw std::runtime_error("The state file " + file_ + " is not one of this program (" + error.what() +
                             "); move it away or name another file");
  }
}

void Store::Change(const std::function<bool(State&)>& change) {
  const std::lock_guard lock(mutex_);
  if (file_.empty()) {
    change(state_);
    return;
  }
  State next = state_;
  if (!change(next)) return;
  WriteWhole(file_, TextFrom(next));
  state_ = std::move(next);
}

void Store::Read(const std::function<void(const State&)>& read) const {
  const std::lock_guard lock(mutex_);
  read(state_);
}

}  // namespace sandbox
