#pragma once

#include <string>
#include <string_view>

#include "json.h"

namespace sandbox {

/// Random letters and digits from the system's generator; safe in a form body as they stand.
std::string RandomText(std::size_t length);

/// Random decimal digits, the first never 0.
std::string RandomDigits(std::size_t length);

/// A random GUID, lower case, without braces.
std::string RandomGuid();

/// SHA-256 in hexadecimal.
std::string Digest(std::string_view text);

/// SHA-256 of a document as compact text, made piece by piece.
std::string Digest(const json::value& document);

/// The bytes of a base64 text; throws std::invalid_argument when it is none.
std::string FromBase64(std::string_view text);

}  // namespace sandbox
