#pragma once

#include <string>

#include "clock.h"

namespace sandbox {

/// UTC as the Date header has it: "Tue, 05 Mar 2024 10:20:30 GMT".
std::string HttpTime(TimePoint time);

}  // namespace sandbox
