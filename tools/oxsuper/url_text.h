#pragma once

#include <string>
#include <string_view>

namespace oxSuperAPI {

/// A text as one segment of a URL's path: what the library puts into a URL as it stands must not end the segment.
std::string EscapedForURL(std::string_view Text);

}  // namespace oxSuperAPI
