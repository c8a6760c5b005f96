#pragma once

#include <cstddef>
#include <iterator>
#include <string>
#include <type_traits>

#include "oxSuperAPI/foundation/uBeamLazy.h"
#include "oxSuperAPI/host/uBeamError.h"

namespace oxSuperAPI {

/// Tables inside a record have five entries; what the service sends beyond them is not kept.
inline constexpr std::size_t MaxTableEntries = 5;

/// A table of five entries, most of them empty: an entry takes room once it is accessed for a change, and with it those
/// before it. Reading never allocates. References stay good until the table is assigned or destroyed. Assigning `{}`
/// empties all entries. Copied deeply.
template <class Entry>
class TBeamEntryTable {
  struct TNode {
    Entry Value{};
    TBeamLazy<TNode> Next{};
  };

 public:
  /// Raises TBeamRangeError for an index of five and more. @{
  Entry& operator[](std::size_t Index) { return At(FFirst, Index); }
  const Entry& operator[](std::size_t Index) const { return At(FFirst, Index); }
  /// @}

  /// Always five. @{
  static constexpr std::size_t size() { return MaxTableEntries; }

  template <class Node>
  class TIterator;
  auto begin() { return TIterator<TNode>(&*FFirst); }
  auto begin() const { return TIterator<const TNode>(&*FFirst); }
  std::default_sentinel_t end() const { return {}; }
  /// @}

 private:
  template <class Lazy>
  static auto& At(Lazy& First, std::size_t Index) {
    if (Index >= MaxTableEntries)
      throw TBeamRangeError("A table of a record has no entry of index " + std::to_string(Index));
    auto* Node = &*First;
    for (; Index > 0; --Index) Node = &*Node->Next;
    return Node->Value;
  }

  TBeamLazy<TNode> FFirst;
};

/// Over all five entries, from the first.
template <class Entry>
template <class Node>
class TBeamEntryTable<Entry>::TIterator {
 public:
  /// As the standard library asks of an input iterator. @{
  using value_type = Entry;
  using difference_type = std::ptrdiff_t;

  explicit TIterator(Node* First) : FNode(First) {}
  auto& operator*() const { return FNode->Value; }
  TIterator& operator++() {
    if (++FIndex < MaxTableEntries) FNode = &*FNode->Next;
    return *this;
  }
  void operator++(int) { ++*this; }
  friend bool operator==(const TIterator& Left, std::default_sentinel_t) { return Left.FIndex == MaxTableEntries; }
  /// @}

 private:
  Node* FNode;
  std::size_t FIndex = 0;
};

}  // namespace oxSuperAPI
