#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "oxSuperAPI/foundation/uBeamJSONSinks.h"
#include "oxSuperAPI/host/uHostDates.h"
#include "oxSuperAPI/host/uHostJson.h"
#include "oxSuperAPI/host/uHostXml.h"

namespace oxSuperAPI {

/// Where a read starts: an object, an array, any other value, or nothing at all. Refers to the tree, owns nothing.
class TJSONView {
 public:
  /// Converts in silence, so that every reader takes any of them. Null is nothing at all. @{
  TJSONView(std::nullptr_t = nullptr) {}
  TJSONView(const TJSONValue* Value)
      : FObject(Value ? Value->AsObject() : nullptr), FArray(Value ? Value->AsArray() : nullptr) {}
  TJSONView(const TJSONObject* Object) : FObject(Object) {}
  TJSONView(const TJSONArray* Array) : FArray(Array) {}
  TJSONView(const TJSONValue& Value) : TJSONView(&Value) {}
  TJSONView(const TJSONObject& Object) : FObject(&Object) {}
  TJSONView(const TJSONArray& Array) : FArray(&Array) {}
  /// @}

  /// The tree's own object or array; null when the view starts at something else. @{
  const TJSONObject* Object() const { return FObject; }
  const TJSONArray* Array() const { return FArray; }
  /// @}

 private:
  const TJSONObject* FObject = nullptr;
  const TJSONArray* FArray = nullptr;
};

/// What `TBeamAPIHelper::GetNodeValue` takes: an attribute of the last node of the path, or the text of that node.
enum class TxmlValueType : std::uint8_t { xmlvtAttribute, xmlvtValue };
using enum TxmlValueType;

/// Readers of parsed JSON and XML. Missing members, JSON null and absent objects read as "", 0, 0.0 or false.
///
/// `SafeJsonValue` and the `ValueAs...` operations take a path: names separated by "." descend through objects, "[n]"
/// picks the n-th element (from 0) of an array. A path that is malformed or leads nowhere is not found, never an error;
/// a member whose own name holds a dot cannot be reached. Names are case-sensitive. Where a name repeats, the first
/// member counts. A value as text: a string's content, a number's own digits, "true" or "false"; an object or array
/// reads as "".
class OXSUPERAPI_EXPORT TBeamAPIHelper {
 public:
  TBeamAPIHelper() = delete;

  /// What the readers below make of a value that they found; null is a missing one. The text is borrowed from the tree.
  /// `Name` is for the error's text. @{
  static std::string_view TextOf(const TJSONValue* Value) {
    return Value && Value->Kind() == TJSONKind::String ? *Value->AsString() : TextOfOther(Value);
  }
  static std::int32_t IntegerOf(const TJSONValue* Value);
  static double DoubleOf(const TJSONValue* Value, std::string_view Name);
  static double StrictDoubleOf(const TJSONValue* Value, std::string_view Name);
  static bool BoolOf(const TJSONValue* Value);
  /// @}
  /// The value at the path as text; "" when it is not found.
  static std::string SafeJsonValue(TJSONView Json, std::string_view Name);

  /// These three take the member of exactly that name, no path.
  static std::int32_t SafeJsonInteger(TJSONView Json, std::string_view Name);
  /// True when the member is there and not null; `Out` is then borrowed from the tree, else left as it was.
  /// Raises TBeamTypeError when the member is of another kind. @{
  static bool SafeJsonObject(TJSONView Json, std::string_view Name, const TJSONObject*& Out);
  static bool SafeJsonArray(TJSONView Json, std::string_view Name, const TJSONArray*& Out);
  /// @}

  /// The value at `Name` inside the value at `ParentName`, or inside `Json` itself when `ParentName` is empty. @{
  static std::string ValueAsString(TJSONView Json, std::string_view ParentName, std::string_view Name);
  static std::int32_t ValueAsInteger(TJSONView Json, std::string_view ParentName, std::string_view Name);
  /// @}

  /// 0.0 for a text of nothing but blanks. Raises TBeamConversionError when the text is not a number.
  static double ValueAsDouble(TJSONView Json, std::string_view ParentName, std::string_view Name);
  /// As ValueAsDouble, but a missing or blank text raises too: some amounts may not be absent.
  static double ValueAsStrictDouble(TJSONView Json, std::string_view ParentName, std::string_view Name);
  /// True only for a JSON boolean that is true: the string "true" is not.
  static bool ValueAsBool(TJSONView Json, std::string_view ParentName, std::string_view Name);

  /// The first member of that name anywhere in the tree, in document order: letter case and blanks around the member's
  /// name do not count, and a member's own name comes before what is inside it. A member that holds JSON null is found.
  /// Null when there is none. Looks no deeper than MaxJSONDepth.
  static const TJSONValue* FindByName(TJSONView Json, std::string_view Name);

  /// "" for exactly 0, else "YYYY-MM-DD".
  static std::string FormatJsonDate(TDateTime Value);
  /// Year, month and day at characters 1-4, 6-7 and 9-10, with any separators; 0 when those are not numbers.
  /// Raises TBeamConversionError for a day that the calendar lacks.
  static TDateTime GetJsonDate(std::string_view Text);
  /// The same JSON object with line breaks and indentation; any other text comes back as it is.
  static std::string PrettyFormatJson(const std::string& Text);
  /// Unwraps a JSON object that arrived as a quoted string. Purely textual, like the senders that wrap it so.
  static std::string CleanUp(const std::string& Text);

  /// The node of exactly this name, or null, also when `Node` is null. Owned by its document. @{
  static const TXMLNode* FindChildNode(const TXMLNode* Node, std::string_view Name);
  static const TXMLNode* FindAttributeNode(const TXMLNode* Node, std::string_view Name);
  /// @}

  /// Follows `Path` (element names separated by ";") down from `Node`; with `xmlvtAttribute` the last name is an
  /// attribute's. `Value` is trimmed, and "" where the path ends early.
  static void GetNodeValue(const TXMLNode* Node, std::string_view Path, TxmlValueType ValueType, std::string& Value);

  /// The customer's key and PIN, from the host.
  static void GetRegoKeyAndPIN(std::string& Key, std::string& PIN);

 private:
  static std::string_view TextOfOther(const TJSONValue* Value);
};

/// A list of strings, each with an optional object attached that the list owns: it goes when its entry is deleted and
/// when the list is cleared or destroyed.
class OXSUPERAPI_EXPORT TObjectStringList {
 public:
  TObjectStringList() = default;
  TObjectStringList(const TObjectStringList&) = delete;
  TObjectStringList& operator=(const TObjectStringList&) = delete;

  /// Appends an entry; an attached object becomes the list's own. @{
  void Add(std::string Text) { FEntries.push_back({std::move(Text), nullptr}); }
  template <class Object>
  void AddObject(std::string Text, std::unique_ptr<Object> Owned) {
    FEntries.push_back({std::move(Text), std::shared_ptr<void>(std::move(Owned))});
  }
  /// @}

  /// Raises TBeamRangeError, as do the readers, when `Index` is not below `Count()`.
  void Delete(std::size_t Index);
  /// Frees the attached objects as well.
  void Clear() { FEntries.clear(); }

  /// Entries, and the text of one. Borrowed from the list. @{
  std::size_t Count() const { return FEntries.size(); }
  const std::string& operator[](std::size_t Index) const { return Entry(Index).Text; }
  /// @}

  /// The attached object, or null; `Object` must be the type it was added as. Owned by the list.
  template <class Object>
  Object* ObjectAt(std::size_t Index) const {
    return static_cast<Object*>(Entry(Index).Attached.get());
  }

 private:
  struct TEntry {
    std::string Text;
    std::shared_ptr<void> Attached;
  };
  const TEntry& Entry(std::size_t Index) const;
  std::vector<TEntry> FEntries;
};

}  // namespace oxSuperAPI
