#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

#include "oxSuperAPI/host/uHostJson.h"

namespace oxSuperAPI {

/// The memory of a tree that was built from one document: all but its root. Nothing in it is freed on its own, and
/// nothing is added once the tree is built.
class TJSONStore {
 public:
  TJSONStore() = default;
  TJSONStore(const TJSONStore&) = delete;
  TJSONStore& operator=(const TJSONStore&) = delete;
  ~TJSONStore();

  /// Aligned for everything that a tree holds.
  void* Allocate(std::size_t Size) {
    Size = (Size + alignof(TJSONContent) - 1) / alignof(TJSONContent) * alignof(TJSONContent);
    if (Size > FFree) AddChunk(Size);
    FFree -= Size;
    return std::exchange(FNext, FNext + Size);
  }
  /// A copy of `Text`, which must not be empty.
  std::string_view Copy(std::string_view Text) {
    return {static_cast<char*>(std::memcpy(Allocate(Text.size()), Text.data(), Text.size())), Text.size()};
  }

 private:
  struct alignas(TJSONContent) TChunk {
    TChunk* Previous;
  };
  void AddChunk(std::size_t Needed);

  TChunk* FChunk = nullptr;
  char* FNext = nullptr;
  std::size_t FFree = 0;
  std::size_t FTotal = 0;
};

/// The content of a container in one piece of memory: this header and, behind it, an array's elements, or the names
/// and values of an object by turns.
struct TJSONBlock {
  union {
    TJSONStore* Store;   ///< owned: where everything below is, but for what was appended later; mostly null
    TJSONBlock* Parent;  ///< while the tree is being released
  };
  /// Values in here, and room for them. @{
  std::uint32_t Count;
  std::uint32_t Capacity;
  /// @}

  /// With room for so many values, in a store or, without one, to be released. Raises std::length_error when there are
  /// too many to count.
  static TJSONBlock* Make(std::size_t Capacity, TJSONStore* Place = nullptr);
  /// Room for so many more values; `Block` may be null and moves when it is full.
  static void Reserve(TJSONBlock*& Block, std::size_t Added);
  /// With everything below it. Neither recurses nor allocates. Null is nothing.
  static void Release(TJSONBlock* Block) noexcept;

  /// The values, and one more behind the last one: there must be room. @{
  TJSONValue& Add(TJSONValue Value) { return *new (Values() + Count++) TJSONValue(std::move(Value)); }
  TJSONValue* Values() { return reinterpret_cast<TJSONValue*>(this + 1); }
  /// @}

 private:
  TJSONBlock* Enter(TJSONBlock* From) noexcept;
};
static_assert(sizeof(TJSONBlock) % alignof(TJSONValue) == 0);

}  // namespace oxSuperAPI
