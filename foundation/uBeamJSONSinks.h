#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "oxSuperAPI/foundation/uBeamNumbers.h"
#include "oxSuperAPI/foundation/uBeamText.h"
#include "oxSuperAPI/host/uHostJson.h"

namespace oxSuperAPI {

/// Whether a nested object or array is added although it received nothing.
enum class TAddNested : std::uint8_t { IfFilled, Always };

/// The typed add operations: the one place that knows which values are left out and how numbers are written. Each adds
/// at most one member, at the end, whether or not one of that name exists, and returns the sink for chaining. None
/// writes a JSON number: the service reads amounts, counts and identifiers as strings.
///
/// The overloads take exactly `double`, `std::int32_t` and `bool`: a text or a pointer would otherwise become a
/// boolean in silence.
template <class Sink>
class OXSUPERAPI_EXPORT TJSONAddOperations {
 public:
  /// Two decimals. Left out without a name, always; strictly between -0.01 and 0.01 left out, or "0" with AlwaysAdd.
  Sink& AddPair(std::string_view Name, std::same_as<double> auto Value, bool AlwaysAdd = false) {
    if (Name.empty()) return Self();
    if (Value > -0.01 && Value < 0.01) return AlwaysAdd ? Append(Name, "0") : Self();
    return AddFloat(Name, Value);
  }

  /// Decimal text, zero included.
  Sink& AddPair(std::string_view Name, std::same_as<std::int32_t> auto Value, bool AlwaysAdd = false) {
    return AlwaysAdd || !Name.empty() ? Append(Name, std::to_string(Value)) : Self();
  }

  /// A JSON boolean.
  Sink& AddPair(std::string_view Name, std::same_as<bool> auto Value, bool AlwaysAdd = false) {
    if (AlwaysAdd || !Name.empty()) Self().AppendBoolean(Name, Value);
    return Self();
  }

  /// Two decimals, zero included ("0.00"): for amounts that are always sent.
  Sink& AddPairAsFloat(std::string_view Name, std::same_as<double> auto Value, bool AlwaysAdd = false) {
    return AlwaysAdd || !Name.empty() ? AddFloat(Name, Value) : Self();
  }

  /// The text as it stands; an empty one is left out, unless AlwaysAdd.
  Sink& AddString(std::string_view Name, std::string_view Value, bool AlwaysAdd = false) {
    return AlwaysAdd || !(Name.empty() || Value.empty()) ? Append(Name, Value) : Self();
  }

  /// A JSON boolean: true for the text "true" in any letter case, not trimmed; false for any other.
  Sink& AddStringAsBool(std::string_view Name, std::string_view Value, bool AlwaysAdd = false) {
    if (AlwaysAdd || !(Name.empty() || Value.empty())) Self().AppendBoolean(Name, SameText(Value, "true"));
    return Self();
  }

 private:
  Sink& Self() { return static_cast<Sink&>(*this); }

  Sink& Append(std::string_view Name, std::string_view Text) {
    Self().AppendString(Name, Text);
    return Self();
  }

  Sink& AddFloat(std::string_view Name, double Value) {
    std::string Text;
    AppendFloat(Text, Value);
    return Append(Name, Text);
  }
};

class OXSUPERAPI_EXPORT TJSONArrayHelper;

/// Adds to a JSON object of the document model, which stays the caller's.
class OXSUPERAPI_EXPORT TJSONObjectHelper : public TJSONAddOperations<TJSONObjectHelper> {
 public:
  /// `Object` has to outlive the helper.
  explicit TJSONObjectHelper(TJSONObject& Object) : FObject(Object) {}

  /// Append without a look at the value: what the add operations end in. @{
  void AppendString(std::string_view Name, std::string_view Text) {
    FObject.Append(std::string(Name), TJSONValue(std::string(Text)));
  }
  void AppendBoolean(std::string_view Name, bool Value) { FObject.Append(std::string(Name), TJSONValue(Value)); }
  /// @}

  /// Adds a nested object that `Fill` writes through the helper it is given.
  template <class FillObject>
  void Object(std::string_view Name, TAddNested When, FillObject Fill);
  /// Adds a nested array; `Fill` adds its elements through `Element` of the helper it is given.
  template <class FillArray>
  void Array(std::string_view Name, TAddNested When, FillArray Fill);

 private:
  TJSONObject& FObject;
};

/// The elements of an array of the document model.
class OXSUPERAPI_EXPORT TJSONArrayHelper {
 public:
  /// `Array` has to outlive the helper.
  explicit TJSONArrayHelper(TJSONArray& Array) : FArray(Array) {}

  /// Adds an object that `Fill` writes through the helper it is given.
  template <class FillObject>
  void Element(TAddNested When, FillObject Fill) {
    TJSONObject Nested;
    TJSONObjectHelper Helper(Nested);
    Fill(Helper);
    if (When == TAddNested::Always || !Nested.IsEmpty()) FArray.Append(TJSONValue(std::move(Nested)));
  }

 private:
  TJSONArray& FArray;
};

template <class FillObject>
void TJSONObjectHelper::Object(std::string_view Name, TAddNested When, FillObject Fill) {
  TJSONObject Nested;
  TJSONObjectHelper Helper(Nested);
  Fill(Helper);
  if (When == TAddNested::Always || !Nested.IsEmpty()) FObject.Append(std::string(Name), TJSONValue(std::move(Nested)));
}

template <class FillArray>
void TJSONObjectHelper::Array(std::string_view Name, TAddNested When, FillArray Fill) {
  TJSONArray Nested;
  TJSONArrayHelper Helper(Nested);
  Fill(Helper);
  if (When == TAddNested::Always || !Nested.IsEmpty()) FObject.Append(std::string(Name), TJSONValue(std::move(Nested)));
}

/// Writes the pretty text of the same members straight into a buffer, with no tree in between. What it writes equals
/// `PrintJSON(..., TJSONLayout::Pretty)` of the tree that TJSONObjectHelper builds.
class OXSUPERAPI_EXPORT TJSONTextWriter : public TJSONAddOperations<TJSONTextWriter> {
 public:
  /// Appends to `Out`, which has to outlive the writer.
  explicit TJSONTextWriter(std::string& Out) : FOut(Out) {}

  /// Append without a look at the value: what the add operations end in. @{
  void AppendString(std::string_view Name, std::string_view Text) {
    StartMember(Name);
    AppendJSONString(FOut, Text);
  }
  void AppendBoolean(std::string_view Name, bool Value) {
    StartMember(Name);
    FOut += Value ? "true" : "false";
  }
  /// @}

  /// The outermost object, or array. @{
  template <class FillObject>
  void Root(FillObject Fill) {
    Enclose('{', '}', Fill);
  }
  template <class FillArray>
  void RootArray(FillArray Fill) {
    Enclose('[', ']', Fill);
  }
  /// @}

  /// As the operations of TJSONObjectHelper and TJSONArrayHelper. @{
  template <class FillObject>
  void Object(std::string_view Name, TAddNested When, FillObject Fill) {
    Nest(
        When, [&] { StartMember(Name); }, '{', '}', Fill);
  }
  template <class FillArray>
  void Array(std::string_view Name, TAddNested When, FillArray Fill) {
    Nest(
        When, [&] { StartMember(Name); }, '[', ']', Fill);
  }
  template <class FillObject>
  void Element(TAddNested When, FillObject Fill) {
    Nest(
        When, [&] { StartItem(); }, '{', '}', Fill);
  }
  /// @}

 private:
  // What stays empty and is not always added is taken back, separator and name included.
  template <class Start, class FillNested>
  void Nest(TAddNested When, Start StartNested, char Open, char Close, FillNested& Fill) {
    const std::size_t Mark = FOut.size();
    const bool Filled = FFilled;
    StartNested();
    if (Enclose(Open, Close, Fill) || When == TAddNested::Always) return;
    FOut.resize(Mark);
    FFilled = Filled;
  }

  template <class FillNested>
  bool Enclose(char Open, char Close, FillNested& Fill) {
    FOut += Open;
    FFilled = false;
    ++FDepth;
    Fill(*this);
    --FDepth;
    const bool Filled = std::exchange(FFilled, true);
    if (Filled) StartLine();
    FOut += Close;
    return Filled;
  }

  void StartMember(std::string_view Name) {
    StartItem();
    AppendJSONString(FOut, Name);
    FOut += ": ";
  }

  void StartItem() {
    if (FFilled) FOut += ',';
    FFilled = true;
    StartLine();
  }

  void StartLine() {
    FOut += '\n';
    FOut.append(2 * FDepth, ' ');
  }

  std::string& FOut;
  std::size_t FDepth = 0;
  bool FFilled = false;
};

/// The two forms of a record that describes its JSON once, in `template <class Sink> void Write(Sink&) const`. @{
template <class Record>
std::unique_ptr<TJSONObject> WriteToObject(const Record& Source) {
  auto Result = std::make_unique<TJSONObject>();
  TJSONObjectHelper Helper(*Result);
  Source.Write(Helper);
  return Result;
}
template <class Record>
std::string WriteToText(const Record& Source) {
  std::string Result;
  TJSONTextWriter Writer(Result);
  Writer.Root([&](TJSONTextWriter& Json) { Source.Write(Json); });
  return Result;
}
/// @}

/// The same for a list that is a bare array on the wire: `template <class Array> void WriteElements(Array&) const`. @{
template <class List>
std::unique_ptr<TJSONArray> WriteToArray(const List& Source) {
  auto Result = std::make_unique<TJSONArray>();
  TJSONArrayHelper Helper(*Result);
  Source.WriteElements(Helper);
  return Result;
}
template <class List>
std::string WriteToArrayText(const List& Source) {
  std::string Result;
  TJSONTextWriter Writer(Result);
  Writer.RootArray([&](TJSONTextWriter& Json) { Source.WriteElements(Json); });
  return Result;
}
/// @}

}  // namespace oxSuperAPI
