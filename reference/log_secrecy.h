#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace oxSuperAPI {

/// What a key says about its value. In this order: whoever hides one hides what comes after it.
enum class TSecrecy : std::uint8_t {
  Open,
  Personal,   ///< about a person
  Secret,     ///< opens a door
  Credential  ///< a secret that is worth knowing again elsewhere
};

/// Of a key in any letter case, with or without "_" and "-"; of a path ("member.dob") its last part counts, too. Keys
/// that nobody foresaw count as secret when they hold a word such as "token".
TSecrecy SecrecyOf(std::string_view Name);

/// What a key of a JSON object says. In {"name":"PIN","value":"1234"}, the first key says what the second one holds.
struct TKeyMeaning {
  TSecrecy Secrecy = TSecrecy::Open;
  TSecrecy Nested = TSecrecy::Open;  ///< of an object or an array: "name" is a person's there, and a thing's otherwise
  bool NameOfPair = false;
  bool ValueOfPair = false;
};
TKeyMeaning MeaningOf(std::string_view Name);
bool IsValueOfPair(std::string_view Name);

/// The text with "%41" or "\u0041" as the character.
std::string DecodeName(std::string_view Name);

/// 8-4-4-4-12 hexadecimal digits.
bool IsGUID(std::string_view Word);

/// A word as tokens are written: long, of letters and digits, and no GUID. `AtLeast` is the length from which a word
/// counts; one that begins as signed tokens do counts from 20.
bool LooksLikeToken(std::string_view Word, std::size_t AtLeast);

}  // namespace oxSuperAPI
