#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "oxSuperAPI/host/uBeamError.h"

namespace oxSuperAPI {

/// Credentials that passed through this process, so that they are found where no key announces them: in an error page
/// that echoes a token, in a message that quotes a PIN. Kept in memory only, the last 256 of them. On one thread.
class OXSUPERAPI_EXPORT TKnownSecrets {
 public:
  /// Remembers a credential. Texts that would hide ordinary words are not remembered: those of fewer than 4
  /// characters, and those of fewer than 16 without a digit.
  void Learn(std::string_view Secret);

  /// Where a credential stands in a text.
  struct TPlace {
    /// Offsets of its first character and of the first behind it. @{
    std::size_t Begin;
    std::size_t End;
    /// @}
  };

  /// Every place where a credential of 8 characters or more stands, in order; also where one was cut behind its first
  /// 32 characters or later.
  std::vector<TPlace> Find(std::string_view Text) const;
  /// Is this word one of the credentials that are too short for `Find`?
  bool IsKnown(std::string_view Word) const;
  /// The text with "(hidden)" for every place and every word.
  std::string Hide(std::string_view Text) const;

 private:
  std::deque<std::string> FSecrets;
  std::unordered_set<std::uint64_t> FShort;  ///< those of fewer than 8 characters, in one number
  std::unordered_multimap<std::uint64_t, std::string> FByBeginning;  ///< the others by their first 8
  std::array<std::uint64_t, 64> FFilter{};  ///< a bit for each beginning, so that a look at most places costs nothing
};

}  // namespace oxSuperAPI
