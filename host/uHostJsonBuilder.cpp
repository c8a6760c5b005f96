#include "oxSuperAPI/host/uHostJsonBuilder.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "oxSuperAPI/host/uHostJsonStore.h"

namespace oxSuperAPI {

namespace {

/// Places in the tables, of which a document needs some dozens. What finds no place there is kept again.
constexpr std::size_t Places = 512, PlacesTried = 4;

}  // namespace

TJSONTreeBuilder::TJSONTreeBuilder() : FStore(std::make_unique<TJSONStore>()) {}
TJSONTreeBuilder::~TJSONTreeBuilder() = default;

bool TJSONTreeBuilder::Put(const TJSONContent& Content) {
  if (FAwaited != TAwaited::Value) return false;
  FValues.push_back(Content);
  FAwaited = FBehindValue;
  return true;
}

bool TJSONTreeBuilder::PutText(TJSONKind Kind, std::string_view Text) {
  if (FAwaited != TAwaited::Value) return false;
  FAwaited = FBehindValue;
  FValues.emplace_back(Kind, Text.size() <= TJSONContent::MaxInside ? Text : FStore->Copy(Text));
  return true;
}

bool TJSONTreeBuilder::Name(std::string_view Text) {
  if (FAwaited != TAwaited::Name) return false;
  FAwaited = TAwaited::Value;
  if (Text.size() <= TJSONContent::MaxInside)
    FNames.emplace_back(TJSONKind::String, Text);
  else
    FNames.push_back(KnownName(Text));
  return true;
}

TJSONContent TJSONTreeBuilder::KnownName(std::string_view Text) {
  const TJSONKey Name(Text);
  if (FKnownNames.empty()) FKnownNames.resize(Places);
  const auto Home = static_cast<std::size_t>(Name.Hash() >> 32);
  for (std::size_t Try = 0; Try < PlacesTried; ++Try) {
    TJSONContent& Known = FKnownNames[(Home + Try) % Places];
    if (Known.IsNamed(Name)) return Known;
    if (Known.Kind() == TJSONKind::Null) return Known = TJSONContent(TJSONKind::String, FStore->Copy(Text));
  }
  return FKnownNames[Home % Places] = TJSONContent(TJSONKind::String, FStore->Copy(Text));
}

// Equal names that are kept once are equal bytes. Those that are kept again make another list.
TJSONNames* TJSONTreeBuilder::KnownList(std::span<const TJSONContent> Names) {
  if (FKnownLists.empty()) FKnownLists.resize(Places);
  std::uint64_t Hash = 0;
  for (const TJSONContent& Name : Names) Hash = Hash * 31 + Name.Hash();
  const auto Home = static_cast<std::size_t>(Hash >> 32);
  TKnownList* Place = &FKnownLists[Home % Places];
  for (std::size_t Try = 0; Try < PlacesTried; ++Try) {
    TKnownList& Known = FKnownLists[(Home + Try) % Places];
    if (Known.Count == Names.size() && std::memcmp(Known.Names->List(), Names.data(), Names.size_bytes()) == 0)
      return Known.Names;
    if (Known.Count == 0) {
      Place = &Known;
      break;
    }
  }
  const std::size_t Size = TJSONNames::SizeOf(Names.size()) + TJSONNames::SizeOfIndex(Names.size());
  Place->Count = Names.size();
  Place->Names = new (FStore->Allocate(Size)) TJSONNames;
  std::ranges::copy(Names, Place->Names->List());
  Place->Names->MakeIndex(Names.size());
  return Place->Names;
}

bool TJSONTreeBuilder::Begin(TJSONKind Kind) {
  if (FAwaited != TAwaited::Value || FOpen.size() == MaxJSONDepth) return false;
  FOpen.push_back({Kind, FValues.size(), FNames.size()});
  Enter();
  return true;
}

bool TJSONTreeBuilder::End(TJSONKind Kind) {
  if (FOpen.empty() || FOpen.back().Kind != Kind || FAwaited != FBehindValue) return false;
  const auto [_, FirstValue, FirstName] = FOpen.back();
  const std::span Values = std::span(FValues).subspan(FirstValue), Names = std::span(FNames).subspan(FirstName);
  TJSONBlock* Block = nullptr;
  if (!Values.empty())
    Block = TJSONBlock::MakeIn(*FStore, Values, Kind == TJSONKind::Object ? KnownList(Names) : nullptr);
  FNames.resize(FirstName);
  FValues.resize(FirstValue);
  FValues.emplace_back(Kind, Block, false);
  FOpen.pop_back();
  Enter();
  return true;
}

// Into the innermost open container, between two of its members or elements.
void TJSONTreeBuilder::Enter() {
  const bool IsInObject = !FOpen.empty() && FOpen.back().Kind == TJSONKind::Object;
  FBehindValue = FOpen.empty() ? TAwaited::Nothing : IsInObject ? TAwaited::Name : TAwaited::Value;
  FAwaited = FBehindValue;
}

std::unique_ptr<TJSONValue> TJSONTreeBuilder::Take() {
  if (!FOpen.empty() || FValues.empty()) return nullptr;
  auto Result = std::make_unique<TJSONValue>();
  auto NextStore = std::make_unique<TJSONStore>();
  // The root owns: itself, and through its block the store with all the rest.
  const TJSONContent& Root = FValues.front();
  if (Root.Kind() == TJSONKind::String || Root.Kind() == TJSONKind::Number) {
    Result->Hold(TJSONContent::Owning(Root.Kind(), Root.Text()));
  } else if (Root.Kind() == TJSONKind::Array || Root.Kind() == TJSONKind::Object) {
    TJSONBlock* const Stored = Root.Pointer<TJSONBlock>();
    TJSONBlock* const Block = Stored ? Stored->MovedOut(Stored->Count) : nullptr;
    if (Block) Block->Store = FStore.release();
    Result->Hold(TJSONContent(Root.Kind(), Block, true));
  } else {
    Result->Hold(Root);
  }
  FStore = std::move(NextStore);
  FValues.clear();
  FAwaited = TAwaited::Value;
  FKnownNames.clear();
  FKnownLists.clear();
  return Result;
}

}  // namespace oxSuperAPI
