#include "oxSuperAPI/host/uHostJson.h"

#include <new>

namespace oxSuperAPI {

TJSONObject::TJSONObject() = default;
TJSONObject::TJSONObject(TJSONObject&&) noexcept = default;
TJSONObject& TJSONObject::operator=(TJSONObject&&) noexcept = default;
TJSONObject::~TJSONObject() = default;

TJSONValue& TJSONObject::Append(std::string Name, TJSONValue Value) {
  FMembers.push_back({std::move(Name), std::move(Value)});
  return FMembers.back().Value;
}

const TJSONValue* TJSONObject::Find(std::string_view Name) const {
  for (const TJSONPair& Member : FMembers)
    if (Member.Name == Name) return &Member.Value;
  return nullptr;
}

TJSONArray::TJSONArray() = default;
TJSONArray::TJSONArray(TJSONArray&&) noexcept = default;
TJSONArray& TJSONArray::operator=(TJSONArray&&) noexcept = default;
TJSONArray::~TJSONArray() = default;

TJSONValue& TJSONArray::Append(TJSONValue Value) {
  FElements.push_back(std::move(Value));
  return FElements.back();
}

const TJSONValue* TJSONArray::At(std::size_t Index) const {
  return Index < FElements.size() ? &FElements[Index] : nullptr;
}

TJSONValue& TJSONValue::operator=(TJSONValue&& Other) noexcept {
  if (this == &Other) return *this;
  // Other may live inside this value, so its content is taken out before anything is released.
  auto Content = std::move(Other.FValue);
  ReleaseChildren();
  FValue = std::move(Content);
  return *this;
}

TJSONValue::~TJSONValue() {
  ReleaseChildren();
}

// Moves grandchildren up into one work list until every container that is destroyed is flat.
void TJSONValue::ReleaseChildren() noexcept {
  const auto Take = [](TJSONValue& From, std::vector<TJSONValue>& Pending) {
    if (TJSONArray* Array = From.AsArray()) {
      for (TJSONValue& Element : Array->FElements)
        if (Element.AsArray() || Element.AsObject()) Pending.push_back(std::move(Element));
      Array->FElements.clear();
    } else if (TJSONObject* Object = From.AsObject()) {
      for (TJSONPair& Member : Object->FMembers)
        if (Member.Value.AsArray() || Member.Value.AsObject()) Pending.push_back(std::move(Member.Value));
      Object->FMembers.clear();
    }
  };
  if (!AsArray() && !AsObject()) return;
  try {
    std::vector<TJSONValue> Pending;
    Take(*this, Pending);
    while (!Pending.empty()) {
      TJSONValue Next = std::move(Pending.back());
      Pending.pop_back();
      Take(Next, Pending);
    }
  } catch (const std::bad_alloc&) {
    // No room for the work list: what is left goes by ordinary destruction.
  }
}

namespace {

class TPrinter {
 public:
  TPrinter(TJSONLayout Layout, std::string& Out) : FPretty(Layout == TJSONLayout::Pretty), FOut(Out) {}

  void Print(const TJSONValue& Value) {
    if (const std::string* Text = Value.AsString()) return AppendJSONString(FOut, *Text);
    if (const TJSONNumber* Number = Value.AsNumber()) return void(FOut += Number->Text);
    if (const bool* Boolean = Value.AsBoolean()) return void(FOut += *Boolean ? "true" : "false");
    if (const TJSONArray* Array = Value.AsArray()) return Print(*Array);
    if (const TJSONObject* Object = Value.AsObject()) return Print(*Object);
    FOut += "null";
  }

  void Print(const TJSONObject& Object) {
    Enclose('{', '}', Object.Members(), [this](const TJSONPair& Member) {
      AppendJSONString(FOut, Member.Name);
      FOut += FPretty ? ": " : ":";
      Print(Member.Value);
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
  static constexpr char Hex[] = "0123456789abcdef";
  Out += '"';
  std::size_t Start = 0;
  for (std::size_t Index = 0; Index < Text.size(); ++Index) {
    const auto Byte = static_cast<unsigned char>(Text[Index]);
    if (Byte >= 0x20 && Byte != '"' && Byte != '\\') continue;
    Out.append(Text, Start, Index - Start);
    Start = Index + 1;
    switch (Byte) {
      case '"':
        Out += "\\\"";
        break;
      case '\\':
        Out += "\\\\";
        break;
      case '\b':
        Out += "\\b";
        break;
      case '\f':
        Out += "\\f";
        break;
      case '\n':
        Out += "\\n";
        break;
      case '\r':
        Out += "\\r";
        break;
      case '\t':
        Out += "\\t";
        break;
      default:
        Out += "\\u00";
        Out += Hex[Byte >> 4];
        Out += Hex[Byte & 15];
    }
  }
  Out.append(Text, Start, Text.size() - Start);
  Out += '"';
}

}  // namespace oxSuperAPI
