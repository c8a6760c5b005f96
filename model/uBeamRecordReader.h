#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "oxSuperAPI/foundation/uBeamAPIHelper.h"
#include "oxSuperAPI/model/uBeamEntryTable.h"

namespace oxSuperAPI {

/// Reads the members of one JSON object by name, for the records' own use; the counterpart of the sinks that they
/// write to. Reading nothing (a missing object) gives empty texts.
class TBeamRecordReader {
 public:
  /// Reads below `Json`, which has to outlive the reader.
  TBeamRecordReader(TJSONView Json) : FJson(Json), FFinder(Json.Object()) {}

  /// "" when it is missing. Borrowed from the tree.
  std::string_view Text(std::string_view Name) const { return TBeamAPIHelper::TextOf(Find(Name)); }
  /// 0 when it is missing or no integer.
  std::int32_t Integer(std::string_view Name) const { return TBeamAPIHelper::IntegerOf(Find(Name)); }
  /// True only for a JSON true.
  bool Boolean(std::string_view Name) const { return TBeamAPIHelper::BoolOf(Find(Name)); }
  /// Raises TBeamConversionError when the number is missing or malformed.
  double Number(std::string_view Name) const { return TBeamAPIHelper::StrictDoubleOf(Find(Name), Name); }
  /// 0 when it is missing.
  double NumberOrZero(std::string_view Name) const { return TBeamAPIHelper::DoubleOf(Find(Name), Name); }

  /// What is below `Name`, or nothing: for members that are read whether or not their parent is there.
  TBeamRecordReader Below(std::string_view Name) const { return TJSONView(Find(Name)); }

  /// Whether there is a member of that name that is not null.
  bool Has(std::string_view Name) const {
    const TJSONValue* Member = Find(Name);
    return Member && !Member->IsNull();
  }

  /// Runs `Read` on the member's own reader when it holds an object; else the fields keep their values.
  template <class ReadObject>
  void Object(std::string_view Name, ReadObject Read) const {
    ReadObjectOf(Find(Name), Read);
  }
  /// The same with the first member of that name at any depth, as `FindByName` finds it.
  template <class ReadObject>
  void ObjectAnywhere(std::string_view Name, ReadObject Read) const {
    ReadObjectOf(TBeamAPIHelper::FindByName(FJson, Name), Read);
  }

  /// Runs `Read` on each element when the member holds an array; false when it does not. Raises TBeamTypeError at an
  /// element that is no object. @{
  template <class ReadElement>
  bool Array(std::string_view Name, ReadElement Read) const {
    return ReadElementsOf(Find(Name), Name, Read);
  }
  template <class ReadElement>
  bool ArrayAnywhere(std::string_view Name, ReadElement Read) const {
    return ReadElementsOf(TBeamAPIHelper::FindByName(FJson, Name), Name, Read);
  }
  /// @}

  /// Runs `Read` on the reader of each element when the member holds an array: a null among them reads as nothing.
  /// Raises TBeamTypeError at an element that is neither an object nor null. @{
  template <class ReadElement>
  void Elements(std::string_view Name, ReadElement Read) const {
    EachElement(FindArray(Name), Name, Read);
  }
  template <class ReadElement>
  static void EachElement(const TJSONArray* Elements, std::string_view Name, ReadElement Read) {
    if (!Elements) return;
    for (const TJSONValue& Element : Elements->Elements()) Read(OfElement(Element, Name));
  }
  static TBeamRecordReader OfElement(const TJSONValue& Element, std::string_view ArrayName) {
    return Element.IsNull() ? TBeamRecordReader(nullptr) : TBeamRecordReader(ObjectOf(Element, ArrayName));
  }
  /// @}

  /// The first member of that name at any depth, as `FindByName` finds it, or null. Borrowed from the tree.
  const TJSONValue* Anywhere(std::string_view Name) const { return TBeamAPIHelper::FindByName(FJson, Name); }
  /// These raise TBeamError when there is no such member; one that is JSON null is there, with an empty text. @{
  const TJSONValue& Required(std::string_view Name) const { return Present(Find(Name), Name); }
  std::string_view RequiredTextAnywhere(std::string_view Name) const {
    return TBeamAPIHelper::TextOf(&Present(Anywhere(Name), Name));
  }
  /// @}

  /// When the member holds an array, fills the table from its first entry, one entry an element, and leaves the
  /// entries behind them as they are. Elements beyond the table are not looked at.
  template <class Entry, class ReadEntry>
  void FillTable(std::string_view Name, TBeamEntryTable<Entry>& Table, ReadEntry Read) const {
    const TJSONArray* Elements = FindArray(Name);
    for (std::size_t Index = 0; Elements && Index < Elements->Count() && Index < Table.size(); ++Index)
      Read(TBeamRecordReader(ObjectOf(Elements->Elements()[Index], Name)), Table[Index]);
  }

  /// The same, after emptying the whole table.
  template <class Entry, class ReadEntry>
  void ReplaceTable(std::string_view Name, TBeamEntryTable<Entry>& Table, ReadEntry Read) const {
    if (FindArray(Name)) Table = {};
    FillTable(Name, Table, Read);
  }

 private:
  const TJSONValue* Find(std::string_view Name) const { return FFinder.Find(Name); }
  static const TJSONValue& Present(const TJSONValue* Member, std::string_view Name) {
    if (Member) return *Member;
    throw TBeamError("The JSON member \"" + std::string(Name) + "\" is missing");
  }
  const TJSONArray* FindArray(std::string_view Name) const {
    const TJSONValue* Member = Find(Name);
    return Member ? Member->AsArray() : nullptr;
  }
  template <class ReadObject>
  static void ReadObjectOf(const TJSONValue* Value, ReadObject& Read) {
    if (Value && Value->AsObject()) Read(TBeamRecordReader(Value));
  }
  template <class ReadElement>
  static bool ReadElementsOf(const TJSONValue* Value, std::string_view Name, ReadElement& Read) {
    if (!Value || !Value->AsArray()) return false;
    for (const TJSONValue& Element : Value->AsArray()->Elements()) Read(ObjectOf(Element, Name));
    return true;
  }
  static const TJSONObject& ObjectOf(const TJSONValue& Element, std::string_view ArrayName) {
    if (Element.AsObject()) return *Element.AsObject();
    throw TBeamTypeError("The JSON array \"" + std::string(ArrayName) + "\" holds an element that is not an object");
  }

  TJSONView FJson;
  mutable TJSONMemberFinder FFinder;  // remembers where it is, which changes no answer
};

}  // namespace oxSuperAPI
