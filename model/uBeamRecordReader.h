#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "oxSuperAPI/foundation/uBeamAPIHelper.h"
#include "oxSuperAPI/host/uHostJsonFinder.h"
#include "oxSuperAPI/model/uBeamEntryTable.h"

namespace oxSuperAPI {

/// Reads the members of one JSON object by name, for the records' own use; the counterpart of the sinks that they
/// write to. Reading nothing (a missing object) gives empty texts.
class TBeamRecordReader {
 public:
  /// Reads below `Json`, which has to outlive the reader, as has `Places`: what is read below an array remembers there
  /// where members were.
  TBeamRecordReader(TJSONView Json, TJSONPlaces* Places = nullptr)
      : FJson(Json), FPlaces(Places), FFinder(Json.Object(), Places) {}

  /// Where it reads.
  TJSONView Source() const { return FJson; }

  /// "" when it is missing. Borrowed from the tree.
  [[gnu::always_inline]] std::string_view Text(const TJSONKey& Key) const { return TBeamAPIHelper::TextOf(Find(Key)); }
  /// 0 when it is missing or no integer.
  std::int32_t Integer(const TJSONKey& Key) const { return TBeamAPIHelper::IntegerOf(Find(Key)); }
  /// True only for a JSON true.
  bool Boolean(const TJSONKey& Key) const { return TBeamAPIHelper::BoolOf(Find(Key)); }
  /// Raises TBeamConversionError when the number is missing or malformed.
  [[gnu::always_inline]] double Number(const TJSONKey& Key) const {
    return TBeamAPIHelper::StrictDoubleOf(Find(Key), Key.Text());
  }
  /// 0 when it is missing.
  double NumberOrZero(const TJSONKey& Key) const { return TBeamAPIHelper::DoubleOf(Find(Key), Key.Text()); }

  /// What is below `Name`, or nothing: for members that are read whether or not their parent is there.
  TBeamRecordReader Below(const TJSONKey& Key) const { return {TJSONView(Find(Key)), FPlaces}; }

  /// Whether there is a member of that name that is not null.
  bool Has(const TJSONKey& Key) const {
    const TJSONValue* Member = Find(Key);
    return Member && !Member->IsNull();
  }

  /// Runs `Read` on the member's own reader when it holds an object; else the fields keep their values.
  template <class ReadObject>
  void Object(const TJSONKey& Key, ReadObject Read) const {
    ReadObjectOf(Find(Key), Read);
  }
  /// The same with the first member of that name at any depth, as `FindByName` finds it.
  template <class ReadObject>
  void ObjectAnywhere(std::string_view Name, ReadObject Read) const {
    ReadObjectOf(TBeamAPIHelper::FindByName(FJson, Name), Read);
  }

  /// Runs `Read` on the reader of each element when the member holds an array; false when it does not. Raises
  /// TBeamTypeError at an element that is no object. @{
  template <class ReadElement>
  bool Array(const TJSONKey& Key, ReadElement Read) const {
    return ReadElementsOf(Find(Key), Key.Text(), Read);
  }
  template <class ReadElement>
  bool ArrayAnywhere(std::string_view Name, ReadElement Read) const {
    return ReadElementsOf(TBeamAPIHelper::FindByName(FJson, Name), Name, Read);
  }
  /// @}

  /// Runs `Read` on the reader of each element when the member holds an array: a null among them reads as nothing.
  /// Raises TBeamTypeError at an element that is neither an object nor null. @{
  template <class ReadElement>
  void Elements(const TJSONKey& Key, ReadElement Read) const {
    EachElement(FindArray(Key), Key.Text(), Read);
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
  const TJSONValue& Required(const TJSONKey& Key) const { return Present(Find(Key), Key.Text()); }
  std::string_view RequiredTextAnywhere(std::string_view Name) const {
    return TBeamAPIHelper::TextOf(&Present(Anywhere(Name), Name));
  }
  /// @}

  /// When the member holds an array, fills the table from its first entry, one entry an element, and leaves the
  /// entries behind them as they are. Elements beyond the table are not looked at.
  template <class Entry, class ReadEntry>
  void FillTable(const TJSONKey& Key, TBeamEntryTable<Entry>& Table, ReadEntry Read) const {
    const TJSONArray* Elements = FindArray(Key);
    for (std::size_t Index = 0; Elements && Index < Elements->Count() && Index < Table.size(); ++Index)
      Read(TBeamRecordReader(ObjectOf(Elements->Elements()[Index], Key.Text()), FPlaces), Table[Index]);
  }

  /// The same, after emptying the whole table.
  template <class Entry, class ReadEntry>
  void ReplaceTable(const TJSONKey& Key, TBeamEntryTable<Entry>& Table, ReadEntry Read) const {
    if (FindArray(Key)) Table = {};
    FillTable(Key, Table, Read);
  }

 private:
  [[gnu::always_inline]] const TJSONValue* Find(const TJSONKey& Key) const { return FFinder.Find(Key); }
  static const TJSONValue& Present(const TJSONValue* Member, std::string_view Name) {
    if (Member) return *Member;
    throw TBeamError("The JSON member \"" + std::string(Name) + "\" is missing");
  }
  const TJSONArray* FindArray(const TJSONKey& Key) const {
    const TJSONValue* Member = Find(Key);
    return Member ? Member->AsArray() : nullptr;
  }
  template <class ReadObject>
  void ReadObjectOf(const TJSONValue* Value, ReadObject& Read) const {
    if (Value && Value->AsObject()) Read(TBeamRecordReader(Value, FPlaces));
  }
  template <class ReadElement>
  bool ReadElementsOf(const TJSONValue* Value, std::string_view Name, ReadElement& Read) const {
    if (!Value || !Value->AsArray()) return false;
    TJSONPlaces Own;
    for (const TJSONValue& Element : Value->AsArray()->Elements())
      Read(TBeamRecordReader(ObjectOf(Element, Name), FPlaces ? FPlaces : &Own));
    return true;
  }
  static const TJSONObject& ObjectOf(const TJSONValue& Element, std::string_view ArrayName) {
    if (Element.AsObject()) return *Element.AsObject();
    throw TBeamTypeError("The JSON array \"" + std::string(ArrayName) + "\" holds an element that is not an object");
  }

  TJSONView FJson;
  TJSONPlaces* FPlaces;
  mutable TJSONMemberFinder FFinder;  // remembers where it is, which changes no answer
};

}  // namespace oxSuperAPI
