#pragma once

#include <string>

namespace oxSuperAPI {

/// The bytes of a file that the command line names. Raises TToolError when it cannot be read.
std::string ReadWholeFile(const std::string& Name);

}  // namespace oxSuperAPI
