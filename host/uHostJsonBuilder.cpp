#include "oxSuperAPI/host/uHostJsonBuilder.h"

#include <utility>

#include "oxSuperAPI/host/uHostJsonBlock.h"

namespace oxSuperAPI {

namespace {

/// Places in the table of known names, of which a document has some dozens. A name that finds no place is kept again.
constexpr std::size_t KnownNames = 512, PlacesTried = 4;

}  // namespace

TJSONTreeBuilder::TJSONTreeBuilder() : FStore(std::make_unique<TJSONStore>()) {}
TJSONTreeBuilder::~TJSONTreeBuilder() = default;

bool TJSONTreeBuilder::AwaitsName() const {
  return !FOpen.empty() && FOpen.back().Kind == TJSONKind::Object && (FPending.size() - FOpen.back().First) % 2 == 0;
}

bool TJSONTreeBuilder::AwaitsValue() const {
  return FOpen.empty() ? FPending.empty() : !AwaitsName();
}

bool TJSONTreeBuilder::Put(const TJSONContent& Content) {
  if (!AwaitsValue()) return false;
  FPending.push_back(Content);
  return true;
}

bool TJSONTreeBuilder::PutText(TJSONKind Kind, std::string_view Text) {
  if (!AwaitsValue()) return false;
  FPending.emplace_back(Kind, Text.size() <= TJSONContent::MaxInside ? Text : FStore->Copy(Text));
  return true;
}

bool TJSONTreeBuilder::Name(std::string_view Text) {
  if (!AwaitsName()) return false;
  if (Text.size() <= TJSONContent::MaxInside)
    FPending.emplace_back(TJSONKind::String, Text);
  else
    FPending.push_back(KnownName(Text));
  return true;
}

TJSONContent TJSONTreeBuilder::KnownName(std::string_view Text) {
  const TJSONKey Name(Text);
  if (FKnownNames.empty()) FKnownNames.resize(KnownNames);
  const auto Home = static_cast<std::size_t>(Name.Hash() >> 32);
  for (std::size_t Try = 0; Try < PlacesTried; ++Try) {
    TJSONContent& Known = FKnownNames[(Home + Try) % KnownNames];
    if (Known.IsNamed(Name)) return Known;
    if (Known.Kind() == TJSONKind::Null) return Known = TJSONContent(TJSONKind::String, FStore->Copy(Text));
  }
  return FKnownNames[Home % KnownNames] = TJSONContent(TJSONKind::String, FStore->Copy(Text));
}

bool TJSONTreeBuilder::Begin(TJSONKind Kind) {
  if (!AwaitsValue() || FOpen.size() == MaxJSONDepth) return false;
  FOpen.push_back({Kind, FPending.size()});
  return true;
}

bool TJSONTreeBuilder::End(TJSONKind Kind) {
  if (FOpen.empty() || FOpen.back().Kind != Kind) return false;
  const std::size_t First = FOpen.back().First, Count = FPending.size() - First;
  if (Kind == TJSONKind::Object && Count % 2 != 0) return false;
  TJSONBlock* const Block = Count > 0 ? TJSONBlock::Make(Count, FStore.get()) : nullptr;
  if (Block) std::memcpy(static_cast<void*>(Block->Values()), FPending.data() + First, Count * sizeof(TJSONContent));
  if (Block) Block->Count = static_cast<std::uint32_t>(Count);
  FPending.resize(First);
  FPending.emplace_back(Kind, Block, false);
  FOpen.pop_back();
  return true;
}

std::unique_ptr<TJSONValue> TJSONTreeBuilder::Take() {
  if (!FOpen.empty() || FPending.empty()) return nullptr;
  auto Result = std::make_unique<TJSONValue>();
  auto NextStore = std::make_unique<TJSONStore>();
  // The root owns: itself, and through its block the store with all the rest.
  const TJSONContent& Root = FPending.front();
  if (Root.Kind() == TJSONKind::String || Root.Kind() == TJSONKind::Number) {
    Result->FContent = TJSONContent::Owning(Root.Kind(), Root.Text());
  } else if (Root.Kind() == TJSONKind::Array || Root.Kind() == TJSONKind::Object) {
    TJSONBlock* const Stored = Root.Pointer<TJSONBlock>();
    TJSONBlock* const Block = Stored ? TJSONBlock::Make(Stored->Count) : nullptr;
    for (std::uint32_t At = 0; Stored && At < Stored->Count; ++At) Block->Add(std::move(Stored->Values()[At]));
    if (Block) Block->Store = FStore.release();
    Result->FContent = TJSONContent(Root.Kind(), Block, true);
  } else {
    Result->FContent = Root;
  }
  FStore = std::move(NextStore);
  FPending.clear();
  FKnownNames.clear();
  return Result;
}

}  // namespace oxSuperAPI
