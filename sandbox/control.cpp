#include "control.h"

#include <charconv>
#include <stdexcept>

#include "lifecycle.h"

namespace sandbox {
namespace {

constexpr std::string_view kPrefix = "/__sandbox/";

/// A body that is wanted and is no JSON is refused by the exception's text.
json::value Body(const Request& request) {
  std::string problem;
  json::value body = Parse(request.body(), problem);
  if (!problem.empty()) throw std::invalid_argument("The body is not JSON: " + problem);
  return body;
}

Answer Done() {
  return JsonAnswer(200, {{"done", true}});
}

Answer Requests(const Request& request, Services& services) {
  const std::string_view target = View(request.target());
  if (request.method() == http::verb::delete_) {
    services.journal.Clear();
    return Done();
  }
  std::uint64_t since = 0;
  const std::string_view text = QueryValue(target, "since");
  std::from_chars(text.data(), text.data() + text.size(), since);
  return JsonAnswer(200, services.journal.ToJson(since, QueryValue(target, "path")));
}

Answer ChangePresets(const Request& request, Services& services) {
  if (request.method() == http::verb::delete_) services.presets.Clear();
  if (request.method() == http::verb::post) {
    const json::value body = Body(request);
    std::vector<Preset> presets;
    if (body.is_array()) {
      for (const json::value& value : body.get_array()) presets.push_back(PresetFrom(value));
    } else {
      presets.push_back(PresetFrom(body));
    }
    for (Preset& preset : presets) services.presets.Add(std::move(preset));
  }
  return JsonAnswer(200, {{"waiting", services.presets.Count()}});
}

Answer TellClock(const Request& request, Services& services) {
  if (request.method() == http::verb::post) {
    const json::value body = Body(request);
    const json::value* seconds = At(&body, "advanceSeconds");
    if (seconds == nullptr || !seconds->is_number()) throw std::invalid_argument("The body needs advanceSeconds");
    services.clock.Advance(std::chrono::milliseconds(static_cast<std::int64_t>(seconds->to_number<double>() * 1000)));
  }
  return JsonAnswer(200, {{"now", IsoTime(services.clock.Now())}});
}

Answer PreRegister(const Request& request, Services& services) {
  const json::value body = Body(request);
  const std::string uuid(TextAt(&body, "uuid"));
  if (uuid.empty()) throw std::invalid_argument("The body needs the text uuid");
  services.store.Change([&](State& state) {
    state.customers[uuid].uuid = uuid;
    state.customers[uuid].preRegistered = true;
    return true;
  });
  return Done();
}

json::value ToJson(const Batch& batch) {
  return {{"processId", batch.processId},
          {"messageId", batch.messageId},
          {"customer", batch.customer},
          {"status", batch.status},
          {"since", IsoTime(batch.since)},
          {"submitted", IsoTime(batch.submitted)},
          {"paymentReferenceNumber", batch.paymentReferenceNumber},
          {"totalCents", batch.totalCents}};
}

Answer Customers(const Request&, Services& services) {
  json::array customers;
  services.store.Read([&](const State& state) {
    for (const auto& [uuid, customer] : state.customers)
      customers.push_back({{"uuid", uuid},
                           {"customerNumber", customer.customerNumber},
                           {"companyName", customer.companyName},
                           {"clientId", customer.clientId},
                           {"preRegistered", customer.preRegistered},
                           {"activated", customer.activated}});
  });
  return JsonAnswer(200, {{"customers", std::move(customers)}});
}

Answer Batches(const Request&, Services& services) {
  json::array batches;
  services.store.Change([&](State& state) {
    bool moved = false;
    for (auto& [processId, batch] : state.batches) {
      moved |= MoveOnWithTime(batch, services.clock.Now(), services.options.timeStep);
      batches.push_back(ToJson(batch));
    }
    return moved;
  });
  return JsonAnswer(200, {{"batches", std::move(batches)}});
}

/// To the status named in the body, or one step along the road when the body is empty.
Answer MoveBatch(const Request& request, Services& services) {
  const std::string processId = PathSegments(View(request.target())).back();
  const json::value body = request.body().empty() ? json::value(nullptr) : Body(request);
  const std::string status(TextAt(&body, "status"));
  if (!status.empty() && !IsStatus(status)) throw std::invalid_argument("There is no status \"" + status + "\"");
  Answer answer = ErrorAnswer(404, "PROCESS_UNKNOWN", "There is no batch with this process id");
  services.store.Change([&](State& state) {
    const auto found = state.batches.find(processId);
    if (found == state.batches.end()) return false;
    Batch& batch = found->second;
    if (status.empty()) {
      MoveOn(batch, services.clock.Now());
    } else {
      batch.status = status;
      batch.since = services.clock.Now();
    }
    answer = JsonAnswer(200, ToJson(batch));
    return true;
  });
  return answer;
}

Answer RevokeTokens(const Request&, Services& services) {
  services.tokens.RevokeAll();
  return Done();
}

Answer Reset(const Request&, Services& services) {
  services.presets.Clear();
  services.tokens.RevokeAll();
  services.clock.Reset();
  services.store.Change([](State& state) {
    state = {};
    return true;
  });
  services.PreRegister();
  services.journal.Clear();
  return Done();
}

constexpr struct {
  http::verb method;
  std::string_view path;
  Answer (*handle)(const Request&, Services&);
} kControls[] = {
    {http::verb::get, "requests", Requests},
    {http::verb::delete_, "requests", Requests},
    {http::verb::get, "presets", ChangePresets},
    {http::verb::post, "presets", ChangePresets},
    {http::verb::delete_, "presets", ChangePresets},
    {http::verb::get, "clock", TellClock},
    {http::verb::post, "clock", TellClock},
    {http::verb::post, "pre-register", PreRegister},
    {http::verb::get, "customers", Customers},
    {http::verb::get, "batches", Batches},
    {http::verb::post, "batches/", MoveBatch},
    {http::verb::delete_, "tokens", RevokeTokens},
    {http::verb::post, "reset", Reset},
};

}  // namespace

bool IsControl(std::string_view target) {
  return target.starts_with(kPrefix);
}

Answer Control(const Request& request, Services& services) {
  std::string_view path = View(request.target()).substr(kPrefix.size());
  path = path.substr(0, path.find('?'));
  try {
    for (const auto& control : kControls) {
      const bool takesId = control.path.ends_with('/');
      const bool fits = takesId ? path.starts_with(control.path) : path == control.path;
      if (fits && control.method == request.method()) return control.handle(request, services);
    }
  } catch (const std::exception& error) {
    return ErrorAnswer(400, "CONTROL_REFUSED", error.what());
  }
  return ErrorAnswer(404, "CONTROL_UNKNOWN", "The control path knows no such request");
}

}  // namespace sandbox
