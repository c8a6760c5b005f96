#pragma once

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "oxSuperAPI/foundation/uBeamCompactText.h"
#include "oxSuperAPI/foundation/uBeamText.h"
#include "oxSuperAPI/host/uBeamError.h"
#include "oxSuperAPI/host/uHostJsonEscaping.h"

namespace oxSuperAPI {

/// Whether a nested object or array is added although it received nothing.
enum class TAddNested : std::uint8_t { IfFilled, Always };

/// The name of a member. Of a literal it is known at compile time whether it stands in JSON as it is.
class TJSONName {
 public:
  /// Refers to the text, which has to outlive the member's being added. @{
  template <std::size_t Size>
  consteval TJSONName(const char (&Literal)[Size])
      : FText(Literal), FSize(Size - 1), FIsPlain(std::ranges::none_of(Text(), NeedsJSONEscape)) {}
  TJSONName(std::string_view Name)
      : FText(Name.data()), FSize(Name.size() & MaxSize), FIsPlain(CopyPlainJSON(nullptr, Name)) {}
  TJSONName(const std::string& Name) : TJSONName(std::string_view(Name)) {}
  /// @}

  /// What it holds; plain when nothing in it needs an escape. @{
  constexpr std::string_view Text() const { return {FText, FSize}; }
  constexpr bool IsEmpty() const { return FSize == 0; }
  constexpr bool IsPlain() const { return FIsPlain; }
  /// @}

 private:
  static constexpr std::size_t MaxSize = ~std::size_t{} >> 1;

  // In two words, which are handed over in registers.
  const char* FText;
  std::size_t FSize : 8 * sizeof(std::size_t) - 1;
  bool FIsPlain : 1;
};

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
  [[gnu::always_inline]] Sink& AddPair(TJSONName Name, std::same_as<double> auto Value, bool AlwaysAdd = false) {
    if (Name.IsEmpty()) return Self();
    if (!(Value > -0.01 && Value < 0.01)) return AddFloat(Name, Value);
    return AlwaysAdd ? Append(Name, std::string_view("0")) : Self();
  }

  /// Decimal text, zero included.
  Sink& AddPair(TJSONName Name, std::same_as<std::int32_t> auto Value, bool AlwaysAdd = false) {
    return AlwaysAdd || !Name.IsEmpty() ? Append(Name, std::string_view(std::to_string(Value))) : Self();
  }

  /// A JSON boolean.
  Sink& AddPair(TJSONName Name, std::same_as<bool> auto Value, bool AlwaysAdd = false) {
    if (AlwaysAdd || !Name.IsEmpty()) Self().AppendBoolean(Name, Value);
    return Self();
  }

  /// Two decimals, zero included ("0.00"): for amounts that are always sent.
  Sink& AddPairAsFloat(TJSONName Name, std::same_as<double> auto Value, bool AlwaysAdd = false) {
    return AlwaysAdd || !Name.IsEmpty() ? AddFloat(Name, Value) : Self();
  }

  /// The text as it stands; an empty one is left out, unless AlwaysAdd. @{
  Sink& AddString(TJSONName Name, std::string_view Value, bool AlwaysAdd = false) {
    return AlwaysAdd || !(Name.IsEmpty() || Value.empty()) ? Append(Name, Value) : Self();
  }
  [[gnu::always_inline]] Sink& AddString(TJSONName Name, const std::same_as<TBeamText> auto& Value,
                                         bool AlwaysAdd = false) {
    return AlwaysAdd || !(Name.IsEmpty() || Value.empty()) ? Append(Name, Value) : Self();
  }  ///< The same for a text that knows whether it needs an escape.
  /// @}

  /// A JSON boolean: true for the text "true" in any letter case, not trimmed; false for any other.
  Sink& AddStringAsBool(TJSONName Name, std::string_view Value, bool AlwaysAdd = false) {
    if (AlwaysAdd || !(Name.IsEmpty() || Value.empty())) Self().AppendBoolean(Name, SameText(Value, "true"));
    return Self();
  }

 private:
  Sink& Self() { return static_cast<Sink&>(*this); }

  template <class Text>
  [[gnu::always_inline]] Sink& Append(TJSONName Name, const Text& Value) {
    Self().AppendString(Name, Value);
    return Self();
  }

  [[gnu::always_inline]] Sink& AddFloat(TJSONName Name, double Value) {
    Self().AppendAmount(Name, Value);
    return Self();
  }
};

}  // namespace oxSuperAPI
