#include "faults.h"

#include <algorithm>
#include <stdexcept>

#include "crypto.h"

namespace sandbox {
namespace {

constexpr struct {
  std::string_view name;
  Fault fault;
} kFaults[] = {
    {"none", Fault::none},
    {"reset-on-connect", Fault::resetOnConnect},
    {"reset-in-handshake", Fault::resetInHandshake},
    {"reset-before-read", Fault::resetBeforeRead},
    {"reset-after-read", Fault::resetAfterRead},
    {"reset-mid-response", Fault::resetMidResponse},
    {"close-after-read", Fault::closeAfterRead},
    {"truncate", Fault::truncate},
    {"cut-without-length", Fault::cutWithoutLength},
    {"chunked-cut", Fault::chunkedCut},
    {"garbage", Fault::garbage},
    {"drip", Fault::drip},
    {"close-after-response", Fault::closeAfterResponse},
};

Fault FaultFrom(std::string_view name) {
  for (const auto& known : kFaults)
    if (known.name == name) return known.fault;
  throw std::invalid_argument("Unknown fault: " + std::string(name));
}

bool ForConnection(const Preset& preset) {
  return preset.fault == Fault::resetOnConnect || preset.fault == Fault::resetInHandshake;
}

void ReadMember(Preset& preset, std::string_view key, const json::value& value, std::size_t& repeat,
                std::optional<bool>& handle) {
  const auto number = [&] { return value.to_number<std::uint32_t>(); };
  const auto milliseconds = [&] { return std::chrono::milliseconds(number()); };
  const auto text = [&] { return Text(value.as_string()); };
  if (key == "path")
    preset.path = text();
  else if (key == "method")
    preset.method = text();
  else if (key == "times")
    preset.times = number();
  else if (key == "fault")
    preset.fault = FaultFrom(View(value.as_string()));
  else if (key == "handle")
    handle = value.as_bool();
  else if (key == "status")
    preset.status = number();
  else if (key == "body")
    preset.body = value.is_string() ? text() : json::serialize(value);
  else if (key == "bodyBase64")
    preset.body = FromBase64(View(value.as_string()));
  else if (key == "bodyRepeat")
    repeat = number();
  else if (key == "headers")
    for (const auto& header : value.as_object())
      preset.headers.emplace_back(header.key(), Text(header.value().as_string()));
  else if (key == "delayMs")
    preset.delay = milliseconds();
  else if (key == "sendBytes")
    preset.sendBytes = number();
  else if (key == "dripBytes")
    preset.dripBytes = std::max(number(), 1u);
  else if (key == "dripMs")
    preset.dripPause = milliseconds();
  else
    throw std::invalid_argument("unknown member");
}

}  // namespace

std::string_view Name(Fault fault) {
  for (const auto& known : kFaults)
    if (known.fault == fault) return known.name;
  return "";
}

Preset PresetFrom(const json::value& value) {
  if (!value.is_object()) throw std::invalid_argument("A preset is a JSON object");
  Preset preset;
  std::size_t repeat = 1;
  std::optional<bool> handle;
  for (const auto& member : value.get_object()) {
    const std::string_view key(member.key().data(), member.key().size());
    try {
      ReadMember(preset, key, member.value(), repeat, handle);
    } catch (const std::exception& error) {
      throw std::invalid_argument("Preset member \"" + std::string(key) + "\": " + error.what());
    }
  }
  // A preset answer stands for the service's own, unless the caller wants the request to be booked as well.
  const bool replaced = preset.status || preset.body || preset.fault == Fault::garbage;
  preset.handle = handle.value_or(!replaced) && preset.fault != Fault::resetBeforeRead;
  if (preset.body && repeat != 1) {
    const std::string once = *preset.body;
    preset.body->clear();
    preset.body->reserve(once.size() * repeat);
    for (std::size_t i = 0; i < repeat; ++i) *preset.body += once;
  }
  return preset;
}

void Presets::Add(Preset preset) {
  const std::lock_guard lock(mutex_);
  presets_.push_back(std::move(preset));
}

void Presets::Clear() {
  const std::lock_guard lock(mutex_);
  presets_.clear();
}

std::size_t Presets::Count() const {
  const std::lock_guard lock(mutex_);
  return presets_.size();
}

template <class Fits>
std::optional<Preset> Presets::Take(Fits fits) {
  const std::lock_guard lock(mutex_);
  const auto found = std::ranges::find_if(presets_, fits);
  if (found == presets_.end()) return std::nullopt;
  Preset preset = *found;
  if (found->times == 1) {
    presets_.erase(found);
  } else if (found->times > 1) {
    --found->times;
  }
  return preset;
}

std::optional<Preset> Presets::TakeForConnection() {
  return Take(ForConnection);
}

std::optional<Preset> Presets::TakeForRequest(std::string_view method, std::string_view target) {
  return Take([&](const Preset& preset) {
    return !ForConnection(preset) && target.starts_with(preset.path) &&
           (preset.method.empty() || preset.method == method);
  });
}

void Override(Answer& answer, const Preset& preset) {
  if (preset.status) answer.status = *preset.status;
  if (preset.body) answer.body = *preset.body;
  if (preset.body && answer.headers.empty() && !preset.body->empty())
    answer.headers.emplace_back("Content-Type", "application/json; charset=utf-8");
  for (const auto& header : preset.headers) {
    std::erase_if(answer.headers, [&](const auto& old) { return boost::beast::iequals(old.first, header.first); });
    answer.headers.push_back(header);
  }
}

}  // namespace sandbox
