#pragma once

#include "store.h"

namespace sandbox {

/// The text of a state file.
std::string TextFrom(const State& state);

/// Reads such a text; throws when it is none, or of another format.
State StateFrom(const std::string& text);

}  // namespace sandbox
