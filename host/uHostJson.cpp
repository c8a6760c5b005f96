#include "oxSuperAPI/host/uHostJson.h"

#include "oxSuperAPI/host/uHostJsonEscaping.h"

namespace oxSuperAPI {

TJSONObject& TJSONObject::operator=(TJSONObject&& Other) noexcept {
  // What Other holds may live inside this object, so it is taken out before anything is released.
  const TJSONContent Taken = std::exchange(Other.FContent, TJSONObject().FContent);
  TJSONBlock::Release(std::exchange(FContent, Taken).Pointer<TJSONBlock>());
  return *this;
}

TJSONObject::~TJSONObject() {
  if (FContent.OwnsMemory()) TJSONBlock::Release(Block());
}

TJSONValue& TJSONObject::Append(std::string_view Name, TJSONValue Value) {
  TJSONValue OwnName(Name);  // before the block moves: the name may be one of its own
  TJSONBlock* const Mine = Block() ? Block()->Grown() : TJSONBlock::MakeObject(1);
  FContent = TJSONContent(TJSONKind::Object, Mine, true);
  return Mine->Add(OwnName.Take(), Value.Take());
}

TJSONArray& TJSONArray::operator=(TJSONArray&& Other) noexcept {
  const TJSONContent Taken = std::exchange(Other.FContent, TJSONArray().FContent);
  TJSONBlock::Release(std::exchange(FContent, Taken).Pointer<TJSONBlock>());
  return *this;
}

TJSONArray::~TJSONArray() {
  if (FContent.OwnsMemory()) TJSONBlock::Release(Block());
}

TJSONValue& TJSONArray::Append(TJSONValue Value) {
  TJSONBlock* const Mine = Block() ? Block()->Grown() : TJSONBlock::MakeArray(1);
  FContent = TJSONContent(TJSONKind::Array, Mine, true);
  return Mine->Add(Value.Take());
}

const TJSONValue* TJSONArray::At(std::size_t Index) const {
  return Index < Count() ? Block()->Values() + Index : nullptr;
}

std::span<const TJSONValue> TJSONArray::Elements() const {
  return {Block() ? Block()->Values() : nullptr, Count()};
}

TJSONValue& TJSONValue::operator=(TJSONValue&& Other) noexcept {
  // As with containers: Other may live inside this value. What was here goes with the temporary.
  const TJSONContent Taken = Other.Take();
  TJSONValue Old(Take());
  Hold(Taken);
  return *this;
}

void TJSONValue::Release() noexcept {
  if (Kind() == TJSONKind::Array || Kind() == TJSONKind::Object)
    TJSONBlock::Release(Content().Pointer<TJSONBlock>());
  else
    delete[] Content().Pointer<char>();
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
    bool IsFirst = true;
    for (const auto& Item : Items) {
      if (!std::exchange(IsFirst, false)) FOut += ',';
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
