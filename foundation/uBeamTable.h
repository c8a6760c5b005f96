#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>

#include "oxSuperAPI/host/uBeamError.h"

namespace oxSuperAPI {

/// A constant table of texts with one entry per member of an enumeration.
template <class Enumeration, std::size_t Size>
struct TBeamTable {
  /// The texts by ordinal.
  std::array<std::string_view, Size> Entries;

  /// False for an ordinal that was cast from outside the enumeration.
  constexpr bool Contains(Enumeration Member) const { return Ordinal(Member) < Size; }

  /// The member's text. Raises TBeamRangeError for an ordinal that is no member.
  constexpr std::string_view operator[](Enumeration Member) const {
    if (!Contains(Member)) throw TBeamRangeError("There is no member of ordinal " + std::to_string(Ordinal(Member)));
    return Entries[Ordinal(Member)];
  }

 private:
  static constexpr std::size_t Ordinal(Enumeration Member) {
    return static_cast<std::underlying_type_t<Enumeration>>(Member);
  }
};

}  // namespace oxSuperAPI
