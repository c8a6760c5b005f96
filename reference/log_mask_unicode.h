#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace oxSuperAPI {

/// The value of exactly `Count` hexadecimal digits, none for any other text.
std::optional<unsigned> HexValue(std::string_view Digits, std::size_t Count);

/// Appends a code point as UTF-8; the half of a surrogate pair as its three bytes, so that nothing is lost.
void AppendUTF8(std::string& Text, unsigned Point);

/// What stands between the quotes of a JSON string, as text. Escapes that are none stay as they are.
std::string UnescapeJSON(std::string_view Escaped);
/// The reverse: fit to stand between the quotes.
std::string EscapeJSON(std::string_view Text);

}  // namespace oxSuperAPI
