#include "control.h"

#include <stdexcept>

namespace sandbox {

json::value ControlCall::Body() const {
  if (request.body().empty()) return nullptr;
  std::string problem;
  json::value body = Parse(request.body(), problem);
  if (!problem.empty()) throw std::invalid_argument("The body is not JSON: " + problem);
  return body;
}

Answer Done() {
  return JsonAnswer(200, {{"done", true}});
}

bool IsControl(std::string_view target) {
  return target.starts_with("/__sandbox/");
}

Answer Control(const Request& request, Services& services) {
  const std::vector<std::string> path = PathSegments(View(request.target()));
  try {
    for (const auto group : {ProcessControls(), CustomerControls(), BatchControls()}) {
      for (const ControlEndpoint& control : group) {
        if (control.method != request.method()) continue;
        if (auto ids = MatchPath(control.pattern, path)) return control.handle({request, std::move(*ids), services});
      }
    }
  } catch (const std::exception& error) {
    return ErrorAnswer(400, "CONTROL_REFUSED", error.what());
  }
  return ErrorAnswer(404, "CONTROL_UNKNOWN", "The control path knows no such request");
}

}  // namespace sandbox
