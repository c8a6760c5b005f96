#include <charconv>
#include <stdexcept>

#include "control.h"

namespace sandbox {
namespace {

Answer Requests(const ControlCall& call) {
  const std::string_view target = View(call.request.target());
  if (call.request.method() == http::verb::delete_) {
    call.services.journal.Clear();
    return Done();
  }
  std::uint64_t since = 0;
  const std::string_view text = QueryValue(target, "since");
  std::from_chars(text.data(), text.data() + text.size(), since);
  return JsonAnswer(200, call.services.journal.ToJson(since, QueryValue(target, "path")));
}

Answer ChangePresets(const ControlCall& call) {
  if (call.request.method() == http::verb::delete_) call.services.presets.Clear();
  if (call.request.method() == http::verb::post) {
    const json::value body = call.Body();
    std::vector<Preset> presets;
    if (body.is_array()) {
      for (const json::value& value : body.get_array()) presets.push_back(PresetFrom(value));
    } else {
      presets.push_back(PresetFrom(body));
    }
    for (Preset& preset : presets) call.services.presets.Add(std::move(preset));
  }
  return JsonAnswer(200, {{"waiting", call.services.presets.Count()}});
}

Answer TellClock(const ControlCall& call) {
  if (call.request.method() == http::verb::post) {
    const json::value body = call.Body();
    const json::value* seconds = At(&body, "advanceSeconds");
    if (seconds == nullptr || !seconds->is_number()) throw std::invalid_argument("The body needs advanceSeconds");
    call.services.clock.Advance(
        std::chrono::milliseconds(static_cast<std::int64_t>(seconds->to_number<double>() * 1000)));
  }
  return JsonAnswer(200, {{"now", IsoTime(call.services.clock.Now())}});
}

Answer RevokeTokens(const ControlCall& call) {
  call.services.tokens.RevokeAll();
  return Done();
}

Answer Reset(const ControlCall& call) {
  call.services.presets.Clear();
  call.services.tokens.RevokeAll();
  call.services.clock.Reset();
  call.services.store.Change([](State& state) {
    state = {};
    return true;
  });
  call.services.PreRegister();
  call.services.journal.Clear();
  return Done();
}

constexpr ControlEndpoint kControls[] = {
    {http::verb::get, "/__sandbox/requests", Requests},
    {http::verb::delete_, "/__sandbox/requests", Requests},
    {http::verb::get, "/__sandbox/presets", ChangePresets},
    {http::verb::post, "/__sandbox/presets", ChangePresets},
    {http::verb::delete_, "/__sandbox/presets", ChangePresets},
    {http::verb::get, "/__sandbox/clock", TellClock},
    {http::verb::post, "/__sandbox/clock", TellClock},
    {http::verb::delete_, "/__sandbox/tokens", RevokeTokens},
    {http::verb::post, "/__sandbox/reset", Reset},
};

}  // namespace

std::span<const ControlEndpoint> ProcessControls() {
  return kControls;
}

}  // namespace sandbox
