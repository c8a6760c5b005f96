#include "oxSuperAPI/host/uHostJsonFinder.h"

#include <algorithm>

namespace oxSuperAPI {

TJSONPlaces::TPlace* TJSONPlaces::Of(const TJSONNames* Names) {
  const auto Found = std::ranges::find(FLists, Names, &TList::Names);
  if (Found != FLists.end()) return Found->Places.get();
  if (FLists.size() == MaxLists) return nullptr;
  return FLists.emplace_back(Names, std::make_unique<TPlace[]>(MaxPlaces + 1)).Places.get();
}

TJSONMemberFinder::TJSONMemberFinder(const TJSONObject* Object, TJSONPlaces* Places) : FObject(Object) {
  TJSONBlock* const Block = Object ? Object->Block() : nullptr;
  if (!Block) return;
  FValues = Block->Values();
  FCount = Block->Count;
  if (!Places || !Block->Names->IsShared()) return;
  FNext = Places->Of(Block->Names);
  if (FNext) FEnd = FNext + TJSONPlaces::MaxPlaces;
}

// What is remembered is true of the names, whoever asked and when. So where this one is asked for something else than
// the one before, it only does not find at once what is behind.
const TJSONValue* TJSONMemberFinder::FindElsewhere(TJSONKey Key) {
  const TJSONValue* const Found = FObject ? FObject->Find(Key) : nullptr;
  if (FNext != FEnd && !FNext->Name && Key.IsLiteral())
    *FNext++ = {Key.Text().data(), Found ? static_cast<std::size_t>(Found - FValues) : FCount};
  return Found;
}

}  // namespace oxSuperAPI
