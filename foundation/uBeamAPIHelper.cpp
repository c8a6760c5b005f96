#include "oxSuperAPI/foundation/uBeamAPIHelper.h"

#include <charconv>
#include <optional>
#include <system_error>

#include "oxSuperAPI/foundation/uBeamDates.h"
#include "oxSuperAPI/host/uHost.h"

namespace oxSuperAPI {

namespace {

// The element that "[n]" at the front of Path picks; takes the index off Path.
const TJSONValue* TakeIndex(TJSONView Where, std::string_view& Path) {
  const std::size_t Close = Path.find(']');
  if (Close == std::string_view::npos || !Where.Array()) return nullptr;
  const std::string_view Digits = Path.substr(1, Close - 1);
  std::size_t Index = 0;
  const auto [Stop, Error] = std::from_chars(Digits.data(), Digits.data() + Digits.size(), Index);
  if (Error != std::errc() || Stop != Digits.data() + Digits.size()) return nullptr;
  Path.remove_prefix(Close + 1);
  return Where.Array()->At(Index);
}

// The member that the name at the front of Path selects; takes the name off Path.
const TJSONValue* TakeName(TJSONView Where, std::string_view& Path) {
  const std::string_view Name = Path.substr(0, Path.find_first_of(".["));
  if (Name.empty() || !Where.Object()) return nullptr;
  Path.remove_prefix(Name.size());
  return Where.Object()->Find(Name);
}

const TJSONValue* FindPath(TJSONView Start, std::string_view Path) {
  if (Path.empty()) return nullptr;
  const TJSONValue* Found = Path.starts_with('[') ? TakeIndex(Start, Path) : TakeName(Start, Path);
  while (Found && !Path.empty()) {
    if (Path.starts_with('[')) {
      Found = TakeIndex(Found, Path);
    } else if (Path.starts_with('.')) {
      Path.remove_prefix(1);
      Found = TakeName(Found, Path);
    } else {
      return nullptr;
    }
  }
  return Found;
}

const TJSONValue* FindPath(TJSONView Json, std::string_view ParentName, std::string_view Name) {
  if (ParentName.empty()) return FindPath(Json, Name);
  return FindPath(FindPath(Json, ParentName), Name);
}

// The member of exactly that name, or null when it is missing or JSON null.
const TJSONValue* FindMember(TJSONView Json, std::string_view Name) {
  const TJSONValue* Member = Json.Object() ? Json.Object()->Find(Name) : nullptr;
  return Member && !Member->IsNull() ? Member : nullptr;
}

const TJSONValue* FindByNameBelow(TJSONView Json, std::string_view Name, std::size_t Depth) {
  if (Depth == MaxJSONDepth) return nullptr;
  if (Json.Object()) {
    for (const TJSONPair& Member : Json.Object()->Members()) {
      if (SameText(Trim(Member.Name()), Name)) return &Member.Value();
      if (const TJSONValue* Found = FindByNameBelow(Member.Value(), Name, Depth + 1)) return Found;
    }
  } else if (Json.Array()) {
    for (const TJSONValue& Element : Json.Array()->Elements())
      if (const TJSONValue* Found = FindByNameBelow(Element, Name, Depth + 1)) return Found;
  }
  return nullptr;
}

void ReplaceFirst(std::string& Text, std::string_view Old, std::string_view New) {
  if (const std::size_t At = Text.find(Old); At != std::string::npos) Text.replace(At, Old.size(), New);
}

}  // namespace

std::string_view TBeamAPIHelper::TextOfOther(const TJSONValue* Value) {
  if (!Value) return "";
  switch (Value->Kind()) {
    case TJSONKind::Number:
      return Value->AsNumber()->Text;
    case TJSONKind::True:
      return "true";
    case TJSONKind::False:
      return "false";
    default:
      return "";
  }
}

std::int32_t TBeamAPIHelper::IntegerOf(const TJSONValue* Value) {
  return IntegerOrZero(TextOf(Value));
}

double TBeamAPIHelper::DoubleOf(const TJSONValue* Value, std::string_view Name) {
  return Value && !Trim(TextOf(Value)).empty() ? StrictDoubleOf(Value, Name) : 0.0;
}

double TBeamAPIHelper::StrictDoubleOf(const TJSONValue* Value, std::string_view Name) {
  const std::string_view Text = TextOf(Value);
  double Result = 0;
  if (ParseFloat(Text, Result) || ParseFloat(Trim(Text), Result)) return Result;
  throw TBeamConversionError(std::string(Name) + " value >" + std::string(Text) + "< is not a floating point number");
}

bool TBeamAPIHelper::BoolOf(const TJSONValue* Value) {
  return Value && Value->AsBoolean() == true;
}

std::string TBeamAPIHelper::SafeJsonValue(TJSONView Json, std::string_view Name) {
  return std::string(TextOf(FindPath(Json, Name)));
}

std::int32_t TBeamAPIHelper::SafeJsonInteger(TJSONView Json, std::string_view Name) {
  return IntegerOf(FindMember(Json, Name));
}

bool TBeamAPIHelper::SafeJsonObject(TJSONView Json, std::string_view Name, const TJSONObject*& Out) {
  const TJSONValue* Member = FindMember(Json, Name);
  if (!Member) return false;
  if (!Member->AsObject()) throw TBeamTypeError("The JSON member \"" + std::string(Name) + "\" is not an object");
  Out = Member->AsObject();
  return true;
}

bool TBeamAPIHelper::SafeJsonArray(TJSONView Json, std::string_view Name, const TJSONArray*& Out) {
  const TJSONValue* Member = FindMember(Json, Name);
  if (!Member) return false;
  if (!Member->AsArray()) throw TBeamTypeError("The JSON member \"" + std::string(Name) + "\" is not an array");
  Out = Member->AsArray();
  return true;
}

std::string TBeamAPIHelper::ValueAsString(TJSONView Json, std::string_view ParentName, std::string_view Name) {
  return std::string(TextOf(FindPath(Json, ParentName, Name)));
}

std::int32_t TBeamAPIHelper::ValueAsInteger(TJSONView Json, std::string_view ParentName, std::string_view Name) {
  return IntegerOf(FindPath(Json, ParentName, Name));
}

double TBeamAPIHelper::ValueAsDouble(TJSONView Json, std::string_view ParentName, std::string_view Name) {
  return DoubleOf(FindPath(Json, ParentName, Name), Name);
}

double TBeamAPIHelper::ValueAsStrictDouble(TJSONView Json, std::string_view ParentName, std::string_view Name) {
  return StrictDoubleOf(FindPath(Json, ParentName, Name), Name);
}

bool TBeamAPIHelper::ValueAsBool(TJSONView Json, std::string_view ParentName, std::string_view Name) {
  return BoolOf(FindPath(Json, ParentName, Name));
}

const TJSONValue* TBeamAPIHelper::FindByName(TJSONView Json, std::string_view Name) {
  return FindByNameBelow(Json, Name, 0);
}

std::string TBeamAPIHelper::FormatJsonDate(TDateTime Value) {
  return Value == 0.0 ? "" : FormatDate(Value);
}

TDateTime TBeamAPIHelper::GetJsonDate(std::string_view Text) {
  const auto Piece = [Text](std::size_t First, std::size_t Count) -> std::optional<std::int32_t> {
    const std::string_view Digits = Characters(Text, First, Count);
    return Digits.size() == Count ? TryParseInteger(Digits) : std::nullopt;
  };
  const auto Year = Piece(1, 4);
  const auto Month = Piece(6, 2);
  const auto Day = Piece(9, 2);
  return Year && Month && Day ? EncodeDate(*Year, *Month, *Day) : 0.0;
}

std::string TBeamAPIHelper::PrettyFormatJson(const std::string& Text) {
  const std::unique_ptr<TJSONValue> Value = ParseJSON(Text);
  return Value && Value->AsObject() ? PrintJSON(*Value, TJSONLayout::Pretty) : Text;
}

std::string TBeamAPIHelper::CleanUp(const std::string& Text) {
  if (!Text.starts_with("\"{") || !Text.ends_with("}\"")) return Text;
  std::string Result = Text;
  ReplaceFirst(Result, "\"{", "{");
  ReplaceFirst(Result, "}\"", "}");  // the first, though it need not be the closing one: kept as the service knows it
  std::string Unescaped;
  Unescaped.reserve(Result.size());
  for (std::size_t Index = 0; Index < Result.size(); ++Index) {
    if (Result.compare(Index, 2, "\\\"") == 0) ++Index;
    Unescaped += Result[Index];
  }
  return Unescaped;
}

const TXMLNode* TBeamAPIHelper::FindChildNode(const TXMLNode* Node, std::string_view Name) {
  return Node ? Node->Child(Name) : nullptr;
}

const TXMLNode* TBeamAPIHelper::FindAttributeNode(const TXMLNode* Node, std::string_view Name) {
  return Node ? Node->Attribute(Name) : nullptr;
}

void TBeamAPIHelper::GetNodeValue(const TXMLNode* Node, std::string_view Path, TxmlValueType ValueType,
                                  std::string& Value) {
  const std::string Names(Path);  // Path may refer into Value
  Value.clear();
  std::string_view Rest = Names;
  bool AtEnd = Rest.empty();
  if (AtEnd && ValueType == xmlvtAttribute) return;
  while (Node && !AtEnd) {
    const std::size_t Separator = Rest.find(';');
    const std::string_view Name = Rest.substr(0, Separator);
    AtEnd = Separator == std::string_view::npos;
    if (!AtEnd) Rest.remove_prefix(Separator + 1);
    if (Name.empty()) return;
    Node = AtEnd && ValueType == xmlvtAttribute ? FindAttributeNode(Node, Name) : FindChildNode(Node, Name);
  }
  if (Node) Value = Trim(Node->Text());
}

void TBeamAPIHelper::GetRegoKeyAndPIN(std::string& Key, std::string& PIN) {
  Key.clear();
  PIN.clear();
  Key = Host().Identity().CustomerKey();
  PIN = Host().Identity().CustomerPIN();
}

void TObjectStringList::Delete(std::size_t Index) {
  Entry(Index);
  FEntries.erase(FEntries.begin() + static_cast<std::ptrdiff_t>(Index));
}

const TObjectStringList::TEntry& TObjectStringList::Entry(std::size_t Index) const {
  if (Index >= FEntries.size())
    throw TBeamRangeError("String list index " + std::to_string(Index) + " is out of range");
  return FEntries[Index];
}

}  // namespace oxSuperAPI
