#pragma once

#include "http.h"
#include "services.h"

namespace sandbox {

/// Whether a target belongs to the control path, which is no part of the service.
bool IsControl(std::string_view target);

/// Answers a request of the control path; docs/sandbox.md lists them.
Answer Control(const Request& request, Services& services);

}  // namespace sandbox
