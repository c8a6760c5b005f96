#include "oxSuperAPI/host/uHostJsonBlock.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <new>
#include <stdexcept>

namespace oxSuperAPI {

TJSONContent TJSONContent::Owning(TJSONKind Kind, std::string_view Text) {
  if (Text.size() <= MaxInside) return TJSONContent(Kind, Text);
  auto Copy = std::make_unique_for_overwrite<char[]>(Text.size());
  std::memcpy(Copy.get(), Text.data(), Text.size());
  TJSONContent Result = Outside(TagOf(Kind) | IsOwner, {Copy.get(), Text.size()});
  Copy.release();
  return Result;
}

TJSONStore::~TJSONStore() {
  while (FChunk) ::operator delete(std::exchange(FChunk, FChunk->Previous));
}

// Small documents take little, large ones few chunks, of which the last one wastes little.
void TJSONStore::AddChunk(std::size_t Needed) {
  constexpr std::size_t Smallest = 1024, Largest = std::size_t{1} << 20;
  const std::size_t Size = std::max(Needed, std::clamp(FTotal / 4, Smallest, Largest) - sizeof(TChunk));
  FChunk = new (::operator new(sizeof(TChunk) + Size)) TChunk{FChunk};
  FNext = reinterpret_cast<char*>(FChunk + 1);
  FFree = Size;
  FTotal += Size;
}

TJSONBlock* TJSONBlock::Make(std::size_t Capacity, TJSONStore* Place) {
  if (Capacity > std::numeric_limits<std::uint32_t>::max()) throw std::length_error("Too many JSON values in one list");
  const std::size_t Size = sizeof(TJSONBlock) + Capacity * sizeof(TJSONValue);
  void* const Memory = Place ? Place->Allocate(Size) : ::operator new(Size);
  return new (Memory) TJSONBlock{{nullptr}, 0, static_cast<std::uint32_t>(Capacity)};
}

void TJSONBlock::Reserve(TJSONBlock*& Block, std::size_t Added) {
  const std::size_t Count = Block ? Block->Count : 0;
  if (Block && Block->Capacity - Count >= Added) return;
  TJSONBlock* const Larger = Make(std::max(Count + Added, 2 * Count));
  for (std::size_t At = 0; At < Count; ++At) Larger->Add(std::move(Block->Values()[At]));
  if (Block) Larger->Store = std::exchange(Block->Store, nullptr);
  Release(std::exchange(Block, Larger));
}

// From the parent into this block. What is in its store is owned by none of its values.
TJSONBlock* TJSONBlock::Enter(TJSONBlock* From) noexcept {
  delete Store;
  Parent = From;
  return this;
}

void TJSONBlock::Release(TJSONBlock* Block) noexcept {
  TJSONBlock* Current = Block ? Block->Enter(nullptr) : nullptr;
  while (Current) {
    if (Current->Count == 0) {
      ::operator delete(std::exchange(Current, Current->Parent));
      continue;
    }
    const TJSONContent Last = Current->Values()[--Current->Count].FContent;
    if (!Last.OwnsMemory()) continue;
    if (Last.Kind() != TJSONKind::Array && Last.Kind() != TJSONKind::Object)
      delete[] Last.Pointer<char>();
    else if (TJSONBlock* const Child = Last.Pointer<TJSONBlock>())
      Current = Child->Enter(Current);
  }
}

}  // namespace oxSuperAPI
