#pragma once

#include <rapidjson/error/error.h>

#include <cstddef>
#include <cstdlib>
#include <new>
#include <string>
#include <string_view>
#include <vector>

namespace oxSuperAPI {

// What the two readers of JSON text have in common: the one that builds a tree, and the one that looks for the place
// where a text stops being JSON.

inline constexpr std::string_view JSONByteOrderMark = "\xEF\xBB\xBF";
/// RapidJSON counts in 32 bits.
inline constexpr std::size_t MaxJSONTextSize = 1u << 30;

/// RapidJSON's own allocator hands out null when memory ends, and its reader writes there.
struct TJSONAllocator {
  static const bool kNeedFree = true;
  void* Malloc(std::size_t Size) { return Realloc(nullptr, 0, Size); }
  void* Realloc(void* Block, std::size_t, std::size_t Size) {
    if (Size == 0) {
      std::free(Block);
      return nullptr;
    }
    void* const Result = std::realloc(Block, Size);
    if (!Result) throw std::bad_alloc();
    return Result;
  }
  static void Free(void* Block) { std::free(Block); }
};

/// Whether RapidJSON refused a text with this error although it may be JSON.
inline bool NeedsJSONRepair(rapidjson::ParseErrorCode Error) {
  return Error == rapidjson::kParseErrorStringUnicodeSurrogateInvalid || Error == rapidjson::kParseErrorNumberTooBig;
}

/// What RapidJSON refuses although it is JSON: first halves of surrogate pairs that stand alone become \uFFFD, and
/// every number becomes 0, its own text going to `Numbers`. Every place keeps its offset. A malformed number stays, and
/// is refused for that.
std::string RepairJSON(std::string_view Text, std::vector<std::string>& Numbers);

}  // namespace oxSuperAPI
