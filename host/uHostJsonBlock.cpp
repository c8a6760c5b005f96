#include "oxSuperAPI/host/uHostJsonBlock.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <memory>
#include <new>
#include <stdexcept>

#include "oxSuperAPI/host/uHostJson.h"
#include "oxSuperAPI/host/uHostJsonStore.h"

namespace oxSuperAPI {

namespace {

std::size_t SizeOfValues(std::size_t Count) {
  if (Count > std::numeric_limits<std::uint32_t>::max()) throw std::length_error("Too many JSON values in one list");
  return sizeof(TJSONBlock) + Count * sizeof(TJSONValue);
}

TJSONBlock* NewBlock(void* Memory, std::size_t Capacity, TJSONNames* Names) {
  return new (Memory) TJSONBlock{{nullptr}, Names, 0, static_cast<std::uint32_t>(Capacity)};
}

void ReleaseText(const TJSONContent& Text) noexcept {
  if (Text.OwnsMemory()) delete[] Text.Pointer<char>();
}

}  // namespace

TJSONContent TJSONContent::Owning(TJSONKind Kind, std::string_view Text) {
  if (Text.size() <= MaxInside) return TJSONContent(Kind, Text);
  auto Copy = std::make_unique_for_overwrite<char[]>(Text.size());
  std::memcpy(Copy.get(), Text.data(), Text.size());
  TJSONContent Result = Outside(TagOf(Kind) | IsOwner, {Copy.get(), Text.size()});
  Copy.release();
  return Result;
}

// Half of the places are free at least.
std::size_t TJSONNames::SizeOfIndex(std::size_t Count) {
  return Count > MaxIndexed ? 0 : std::bit_ceil(2 * Count);
}

void TJSONNames::MakeIndex(std::size_t Count) {
  const std::size_t Size = SizeOfIndex(Count);
  if (Size == 0) return;
  IndexBits = static_cast<std::uint32_t>(std::bit_width(Size) - 1);
  auto* const Places = reinterpret_cast<std::uint8_t*>(List() + Count);
  std::fill_n(Places, Size, std::uint8_t{0});
  // The first of equal names comes first on its way.
  for (std::size_t At = 0; At < Count; ++At) {
    std::size_t Place = PlaceOf(List()[At].Hash());
    while (Places[Place] != 0) Place = NextTo(Place);
    Places[Place] = static_cast<std::uint8_t>(At + 1);
  }
}

std::size_t TJSONNames::FindOneByOne(TJSONKey Key, std::size_t Count) const {
  return static_cast<std::size_t>(
      std::find_if(List(), List() + Count, [&](const TJSONContent& Name) { return Name.IsNamed(Key); }) - List());
}

TJSONBlock* TJSONBlock::MakeArray(std::size_t Capacity) {
  return NewBlock(::operator new(SizeOfValues(Capacity)), Capacity, nullptr);
}

TJSONBlock* TJSONBlock::MakeObject(std::size_t Capacity) {
  const std::size_t Size = SizeOfValues(Capacity);
  char* const Memory = static_cast<char*>(::operator new(Size + TJSONNames::SizeOf(Capacity)));
  return NewBlock(Memory, Capacity, new (Memory + Size) TJSONNames);
}

TJSONBlock* TJSONBlock::MakeIn(TJSONStore& Store, std::span<const TJSONContent> Values, TJSONNames* Names) {
  TJSONBlock* const Result = NewBlock(Store.Allocate(SizeOfValues(Values.size())), Values.size(), Names);
  TJSONValue* Next = Result->Values();
  for (const TJSONContent& Value : Values) new (Next++) TJSONValue(Value);
  Result->Count = Result->Capacity;
  return Result;
}

TJSONValue& TJSONBlock::Add(const TJSONContent& Value) {
  return *new (Values() + Count++) TJSONValue(Value);
}

TJSONValue& TJSONBlock::Add(const TJSONContent& Name, const TJSONContent& Value) {
  Names->List()[Count] = Name;
  return Add(Value);
}

TJSONBlock* TJSONBlock::MovedOut(std::size_t NewCapacity) {
  TJSONBlock* const Result = Names ? MakeObject(NewCapacity) : MakeArray(NewCapacity);
  if (Names) std::copy_n(Names->List(), Count, Result->Names->List());
  for (std::uint32_t At = 0; At < Count; ++At) Result->Add(Values()[At].Take());
  Result->Store = Store;
  return Result;
}

TJSONBlock* TJSONBlock::Grown() {
  if (Count < Capacity) return this;
  TJSONBlock* const Larger = MovedOut(2 * std::size_t{Count});
  ::operator delete(this);
  return Larger;
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
    const TJSONContent Last = Current->Values()[--Current->Count].Content();
    if (Current->Names) ReleaseText(Current->Names->List()[Current->Count]);
    if (Last.Kind() != TJSONKind::Array && Last.Kind() != TJSONKind::Object) {
      ReleaseText(Last);
    } else if (TJSONBlock* const Child = Last.OwnsMemory() ? Last.Pointer<TJSONBlock>() : nullptr) {
      Current = Child->Enter(Current);
    }
  }
}

}  // namespace oxSuperAPI
