#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "oxSuperAPI/foundation/uBeamAPIHelper.h"

namespace oxSuperAPI {

/// A superannuation fund of the register.
struct TSuperFund {
  /// Business number, unique superannuation identifier and name, as registered. @{
  std::string ABN;
  std::string USI;
  std::string FundName;
  /// @}
};

/// What a search of the register found: the first 20 funds.
class OXSUPERAPI_EXPORT TSuperFundSearchResult {
 public:
  /// The table; entries from `FundCount` on are empty. @{
  static constexpr std::size_t MaxFunds = 20;

  std::array<TSuperFund, MaxFunds> Funds;
  /// @}
  std::int32_t FundCount = 0;  ///< filled entries, from the first

  /// Empties all entries.
  void Clear();
  /// Replaces what was there. Empty for anything but an array; elements from the 21st on are not looked at. Raises
  /// TBeamTypeError at an element that is neither an object nor null; the funds before it stay.
  void LoadFromJSONObject(TJSONView Source);
};

}  // namespace oxSuperAPI
