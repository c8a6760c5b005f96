#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "oxSuperAPI/host/uHostJsonContent.h"

namespace oxSuperAPI {

class TJSONStore;
class TJSONValue;

/// The names of an object's members in their order: this header, then the names, then the index. Objects of one
/// document whose names are the same ones have them in common. What holds them knows how many there are.
struct OXSUPERAPI_EXPORT TJSONNames {
  /// The places in the index are two to this power; 0 where there is none: names that a host appends, or very many.
  std::uint32_t IndexBits = 0;
  /// Keeps what follows aligned.
  std::uint32_t Unused = 0;

  /// The most names that an index is made for.
  static constexpr std::size_t MaxIndexed = 255;

  /// Room for so many names and their index. @{
  static std::size_t SizeOf(std::size_t Count) { return sizeof(TJSONNames) + Count * sizeof(TJSONContent); }
  static std::size_t SizeOfIndex(std::size_t Count);
  /// @}
  /// Makes the index, behind the names: they are for good then, and objects may share them.
  void MakeIndex(std::size_t Count);
  /// Whether there is one.
  bool IsShared() const { return IndexBits != 0; }

  /// The names. @{
  TJSONContent* List() { return reinterpret_cast<TJSONContent*>(this + 1); }
  const TJSONContent* List() const { return reinterpret_cast<const TJSONContent*>(this + 1); }
  /// @}

  /// Where the first one of that name is; `Count` or more when there is none.
  [[gnu::always_inline]] std::size_t Find(const TJSONKey& Key, std::size_t Count) const {  // so that a key is constants
    if (IndexBits == 0) [[unlikely]]
      return FindOneByOne(Key, Count);
    // The place that the hash gives, or one behind it: a place is 0, or behind which name to look.
    const auto* const Places = reinterpret_cast<const std::uint8_t*>(List() + Count);
    std::size_t Place = PlaceOf(Key.Hash());
    for (;;) {
      const std::size_t Behind = Places[Place];
      if (Behind == 0 || List()[Behind - 1].IsNamed(Key)) return Behind - 1;
      Place = NextTo(Place);
    }
  }

 private:
  std::size_t PlaceOf(std::uint64_t Hash) const { return static_cast<std::size_t>(Hash >> (64 - IndexBits)); }
  std::size_t NextTo(std::size_t Place) const { return (Place + 1) & ((std::size_t{1} << IndexBits) - 1); }
  std::size_t FindOneByOne(TJSONKey Key, std::size_t Count) const;
};

/// The content of a container in one piece of memory: this header and, behind it, the elements of an array or the
/// values of an object. A block in a store shares the names of its members with others; another has its own behind its
/// values.
struct OXSUPERAPI_EXPORT TJSONBlock {
  union {
    TJSONStore* Store;   ///< owned: where everything below is, but for what was appended later; mostly null
    TJSONBlock* Parent;  ///< while the tree is being released
  };
  TJSONNames* Names;  ///< of an object's members; null for an array
  /// Values in here, and room for them. @{
  std::uint32_t Count;
  std::uint32_t Capacity;
  /// @}

  /// In memory of its own, without or with names, to be released. Raises std::length_error when there are too many to
  /// count. @{
  static TJSONBlock* MakeArray(std::size_t Capacity);
  static TJSONBlock* MakeObject(std::size_t Capacity);
  /// @}
  /// In a store, where it stays as it is.
  static TJSONBlock* MakeIn(TJSONStore& Store, std::span<const TJSONContent> Values, TJSONNames* Names);
  /// All that is in here, moved to memory of its own with that capacity.
  TJSONBlock* MovedOut(std::size_t NewCapacity);
  /// With room for one more; what has memory of its own moves when it is full.
  TJSONBlock* Grown();
  /// With everything below it. Neither recurses nor allocates. Null is nothing.
  static void Release(TJSONBlock* Block) noexcept;

  /// One more value behind the last one, and one more name: there must be room. @{
  TJSONValue& Add(const TJSONContent& Value);
  TJSONValue& Add(const TJSONContent& Name, const TJSONContent& Value);
  /// @}
  /// The values.
  TJSONValue* Values() { return reinterpret_cast<TJSONValue*>(this + 1); }

 private:
  TJSONBlock* Enter(TJSONBlock* From) noexcept;
};
static_assert(sizeof(TJSONNames) % alignof(TJSONContent) == 0 && sizeof(TJSONBlock) % alignof(TJSONContent) == 0);

}  // namespace oxSuperAPI
