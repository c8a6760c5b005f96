#pragma once

#include <span>

#include "http.h"
#include "services.h"

namespace sandbox {

/// One request of the control path, which is no part of the service. Handlers refuse by std::invalid_argument.
struct ControlCall {
  const Request& request;
  std::vector<std::string> ids;  ///< what stood in the places of "{}", decoded
  Services& services;

  /// The JSON of the body; null when there is none.
  json::value Body() const;
};

struct ControlEndpoint {
  http::verb method;
  std::string_view pattern;
  Answer (*handle)(const ControlCall&);
};

/// {"done":true}
Answer Done();

// The groups of controls, one file each: control_process.cpp, control_customers.cpp, control_batches.cpp.
std::span<const ControlEndpoint> ProcessControls();
std::span<const ControlEndpoint> CustomerControls();
std::span<const ControlEndpoint> BatchControls();

/// Whether a target belongs to the control path.
bool IsControl(std::string_view target);

/// Answers a request of the control path; docs/sandbox.md lists them.
Answer Control(const Request& request, Services& services);

}  // namespace sandbox
