#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "oxSuperAPI/host/uHostSystem.h"

/// Text is UTF-8; one "character" is one UTF-16 code unit, so that cuts and stars agree with hosts that count so.
/// Only these helpers count characters: text is never indexed by byte elsewhere. A byte that is not part of valid UTF-8
/// counts as one character.
namespace oxSuperAPI {

/// Without the code points up to U+0020 at both ends. Refers into `Text`.
OXSUPERAPI_EXPORT std::string_view Trim(std::string_view Text);

/// ASCII letters only, so the length never changes: every text that the library compares is ASCII. @{
OXSUPERAPI_EXPORT std::string UpperCase(std::string_view Text);
OXSUPERAPI_EXPORT std::string LowerCase(std::string_view Text);
OXSUPERAPI_EXPORT bool SameText(std::string_view Left, std::string_view Right);
/// @}

/// In UTF-16 code units, as column widths and cuts are measured.
OXSUPERAPI_EXPORT std::size_t CharacterCount(std::string_view Text);

/// `Count` characters from the one at position `First` (from 1), or fewer at the end of the text. A cut that would
/// split a surrogate pair leaves the whole pair out. Refers into `Text`. @{
OXSUPERAPI_EXPORT std::string_view Characters(std::string_view Text, std::size_t First, std::size_t Count);
OXSUPERAPI_EXPORT std::string_view FirstCharacters(std::string_view Text, std::size_t Count);
/// @}

/// "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}" with upper-case digits.
OXSUPERAPI_EXPORT std::string GUIDToString(const TGUID& GUID);

}  // namespace oxSuperAPI
