#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "oxSuperAPI/foundation/uBeamJSONAddOperations.h"
#include "oxSuperAPI/foundation/uBeamJSONTextWriter.h"
#include "oxSuperAPI/foundation/uBeamNumbers.h"
#include "oxSuperAPI/host/uHostJson.h"

namespace oxSuperAPI {

class OXSUPERAPI_EXPORT TJSONArrayHelper;

/// Adds to a JSON object of the document model, which stays the caller's.
class OXSUPERAPI_EXPORT TJSONObjectHelper : public TJSONAddOperations<TJSONObjectHelper> {
 public:
  /// `Object` has to outlive the helper.
  explicit TJSONObjectHelper(TJSONObject& Object) : FObject(Object) {}

  /// Append without a look at the value: what the add operations end in. @{
  void AppendString(TJSONName Name, std::string_view Text) {
    FObject.Append(std::string(Name.Text()), TJSONValue(std::string(Text)));
  }
  void AppendAmount(TJSONName Name, double Value) { AppendString(Name, FormatFloat(Value)); }
  void AppendBoolean(TJSONName Name, bool Value) { FObject.Append(std::string(Name.Text()), TJSONValue(Value)); }
  /// @}

  /// Adds a nested object that `Fill` writes through the helper it is given.
  template <class FillObject>
  void Object(TJSONName Name, TAddNested When, FillObject Fill);
  /// Adds a nested array; `Fill` adds its elements through `Element` of the helper it is given.
  template <class FillArray>
  void Array(TJSONName Name, TAddNested When, FillArray Fill);

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
void TJSONObjectHelper::Object(TJSONName Name, TAddNested When, FillObject Fill) {
  TJSONObject Nested;
  TJSONObjectHelper Helper(Nested);
  Fill(Helper);
  if (When == TAddNested::Always || !Nested.IsEmpty())
    FObject.Append(std::string(Name.Text()), TJSONValue(std::move(Nested)));
}

template <class FillArray>
void TJSONObjectHelper::Array(TJSONName Name, TAddNested When, FillArray Fill) {
  TJSONArray Nested;
  TJSONArrayHelper Helper(Nested);
  Fill(Helper);
  if (When == TAddNested::Always || !Nested.IsEmpty())
    FObject.Append(std::string(Name.Text()), TJSONValue(std::move(Nested)));
}

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
  return JSONText("{}", [&](auto& Json) { Source.Write(Json); });
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
  return JSONText("[]", [&](auto& Json) { Source.WriteElements(Json); });
}
/// @}

}  // namespace oxSuperAPI
