#include "oxSuperAPI/host/uHostJson.h"

#include "oxSuperAPI/host/uHostJsonBlock.h"

#include "oxSuperAPI/host/uHostJsonEscaping.h"

namespace oxSuperAPI {

TJSONObject& TJSONObject::operator=(TJSONObject&& Other) noexcept {
  // What Other holds may live inside this object, so it is taken out before anything is released.
  TJSONBlock::Release(std::exchange(FBlock, std::exchange(Other.FBlock, nullptr)));
  return *this;
}

TJSONObject::~TJSONObject() {
  TJSONBlock::Release(FBlock);
}

TJSONValue& TJSONObject::Append(std::string_view Name, TJSONValue Value) {
  TJSONValue OwnName(Name);  // before the block moves: the name may be one of its own
  TJSONBlock::Reserve(FBlock, 2);
  FBlock->Add(std::move(OwnName));
  return FBlock->Add(std::move(Value));
}

const TJSONValue* TJSONObject::Find(const TJSONKey& Key) const {
  for (const TJSONPair& Member : Members())
    if (Member.FName.FContent.IsNamed(Key)) return &Member.FValue;
  return nullptr;
}

std::span<const TJSONPair> TJSONObject::Members() const {
  static_assert(sizeof(TJSONPair) == 2 * sizeof(TJSONValue));
  return {FBlock ? reinterpret_cast<const TJSONPair*>(FBlock->Values()) : nullptr, Count()};
}

std::size_t TJSONObject::Count() const {
  return FBlock ? FBlock->Count / 2 : 0;
}

TJSONArray& TJSONArray::operator=(TJSONArray&& Other) noexcept {
  TJSONBlock::Release(std::exchange(FBlock, std::exchange(Other.FBlock, nullptr)));
  return *this;
}

TJSONArray::~TJSONArray() {
  TJSONBlock::Release(FBlock);
}

TJSONValue& TJSONArray::Append(TJSONValue Value) {
  TJSONBlock::Reserve(FBlock, 1);
  return FBlock->Add(std::move(Value));
}

const TJSONValue* TJSONArray::At(std::size_t Index) const {
  return Index < Count() ? FBlock->Values() + Index : nullptr;
}

std::span<const TJSONValue> TJSONArray::Elements() const {
  return {FBlock ? FBlock->Values() : nullptr, Count()};
}

std::size_t TJSONArray::Count() const {
  return FBlock ? FBlock->Count : 0;
}

TJSONValue& TJSONValue::operator=(TJSONValue&& Other) noexcept {
  // As with containers: Other may live inside this value. What was here goes with the temporary.
  TJSONValue Content(std::move(Other));
  std::swap(FContent, Content.FContent);
  return *this;
}

void TJSONValue::Release() noexcept {
  if (Kind() == TJSONKind::Array || Kind() == TJSONKind::Object)
    TJSONBlock::Release(FContent.Pointer<TJSONBlock>());
  else
    delete[] FContent.Pointer<char>();
}

const TJSONValue* TJSONMemberFinder::FindElsewhere(const TJSONKey& Key) {
  const auto HashOf = [this](std::size_t At) { return FMembers[At].FName.FContent.Hash(); };
  if (!std::exchange(FKnowsAll, true)) {
    FMayHold = {};
    for (std::size_t At = 0; At < FMembers.size(); ++At) FMayHold[HashOf(At) >> 56] = true;
  }
  const std::uint64_t Hash = Key.Hash();
  if (!FMayHold[Hash >> 56]) return nullptr;
  // A name that is not among those passed has its first member from here on.
  std::size_t At = FPassed.MayHold(Hash) ? 0 : FNext;
  while (At < FMembers.size() && !IsNamed(At, Key)) ++At;
  if (At == FMembers.size()) return nullptr;
  for (; FNext <= At; ++FNext) FPassed.Add(HashOf(FNext));
  return &FMembers[At].Value();
}

namespace {

class TPrinter {
 public:
  TPrinter(TJSONLayout Layout, std::string& Out) : FPretty(Layout == TJSONLayout::Pretty), FOut(Out) {}

  void Print(const TJSONValue& Value) {
    if (const auto Text = Value.AsString()) return AppendJSONString(FOut, *Text);
    if (const auto Number = Value.AsNumber()) return void(FOut += Number->Text);
    if (const auto Boolean = Value.AsBoolean()) return void(FOut += *Boolean ? "true" : "false");
    if (const TJSONArray* Array = Value.AsArray()) return Print(*Array);
    if (const TJSONObject* Object = Value.AsObject()) return Print(*Object);
    FOut += "null";
  }

  void Print(const TJSONObject& Object) {
    Enclose('{', '}', Object.Members(), [this](const TJSONPair& Member) {
      AppendJSONString(FOut, Member.Name());
      FOut += FPretty ? ": " : ":";
      Print(Member.Value());
    });
  }

  void Print(const TJSONArray& Array) {
    Enclose('[', ']', Array.Elements(), [this](const TJSONValue& Element) { Print(Element); });
  }

 private:
  template <class List, class PrintOne>
  void Enclose(char Open, char Close, const List& Items, PrintOne PrintItem) {
    if (++FDepth > MaxJSONDepth) throw TBeamError("The JSON value is nested too deeply to be written");
    FOut += Open;
    for (const auto& Item : Items) {
      if (&Item != &Items.front()) FOut += ',';
      StartLine();
      PrintItem(Item);
    }
    --FDepth;
    if (!Items.empty()) StartLine();
    FOut += Close;
  }

  void StartLine() {
    if (!FPretty) return;
    FOut += '\n';
    FOut.append(2 * FDepth, ' ');
  }

  const bool FPretty;
  std::string& FOut;
  std::size_t FDepth = 0;
};

template <class Value>
std::string PrintToText(const Value& Source, TJSONLayout Layout) {
  std::string Result;
  TPrinter(Layout, Result).Print(Source);
  return Result;
}

}  // namespace

std::string PrintJSON(const TJSONValue& Value, TJSONLayout Layout) {
  return PrintToText(Value, Layout);
}
std::string PrintJSON(const TJSONObject& Value, TJSONLayout Layout) {
  return PrintToText(Value, Layout);
}
std::string PrintJSON(const TJSONArray& Value, TJSONLayout Layout) {
  return PrintToText(Value, Layout);
}

void AppendJSONString(std::string& Out, std::string_view Text) {
  const std::size_t Start = Out.size();
  Out.resize(Start + EscapedJSONSize(Text) + 2, '"');
  WriteEscapedJSON(Out.data() + Start + 1, Text);
}

}  // namespace oxSuperAPI
