#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "oxSuperAPI/host/uBeamError.h"

namespace oxSuperAPI {

class TJSONValue;
struct TJSONPair;

/// Deeper nesting neither parses nor prints: everything that walks a tree recurses.
inline constexpr std::size_t MaxJSONDepth = 512;

/// A JSON object: an ordered list of members. Names may repeat and keep their order, since the service reads and the
/// library writes objects with repeated names.
class OXSUPERAPI_EXPORT TJSONObject {
 public:
  /// Movable, not copyable: a tree has one owner. @{
  TJSONObject();
  TJSONObject(TJSONObject&&) noexcept;
  TJSONObject& operator=(TJSONObject&&) noexcept;
  ~TJSONObject();
  /// @}

  /// Appends a member, whether or not one of that name exists. The reference holds until the next Append.
  TJSONValue& Append(std::string Name, TJSONValue Value);
  /// The first member of exactly this name, or null. Borrowed from this object.
  const TJSONValue* Find(std::string_view Name) const;

  /// The members in order, repeated names included. Borrowed from this object. @{
  std::size_t Count() const { return FMembers.size(); }
  bool IsEmpty() const { return FMembers.empty(); }
  const std::vector<TJSONPair>& Members() const { return FMembers; }
  /// @}

 private:
  friend class TJSONValue;
  std::vector<TJSONPair> FMembers;
};

/// A JSON array.
class OXSUPERAPI_EXPORT TJSONArray {
 public:
  /// Movable, not copyable: a tree has one owner. @{
  TJSONArray();
  TJSONArray(TJSONArray&&) noexcept;
  TJSONArray& operator=(TJSONArray&&) noexcept;
  ~TJSONArray();
  /// @}

  /// The reference holds until the next Append.
  TJSONValue& Append(TJSONValue Value);
  /// Null when `Index` is not below `Count()`. Borrowed from this array.
  const TJSONValue* At(std::size_t Index) const;

  /// The elements in order. Borrowed from this array. @{
  std::size_t Count() const { return FElements.size(); }
  bool IsEmpty() const { return FElements.empty(); }
  const std::vector<TJSONValue>& Elements() const { return FElements; }
  /// @}

 private:
  friend class TJSONValue;
  std::vector<TJSONValue> FElements;
};

/// A number as it stood in its document ("3599", "1.50", "1E5"): the tree never passes a number through a double, so
/// nothing is rounded and nothing overflows.
struct TJSONNumber {
  /// Not checked here: the library takes it as it is. @{
  std::string Text;
  /// @}
};

/// One value of a JSON document. Owns everything below it; movable, not copyable. Destroying it does not recurse
/// (while memory lasts), so a
/// tree of any depth that a host builds can be freed.
class OXSUPERAPI_EXPORT TJSONValue {
 public:
  TJSONValue() = default;  ///< null
  /// A value of the argument's kind, which it takes over. A `const char*` is refused: it would become a boolean. @{
  explicit TJSONValue(std::same_as<bool> auto Value) : FValue(Value) {}
  explicit TJSONValue(std::string Value) : FValue(std::move(Value)) {}
  explicit TJSONValue(const char* Value) = delete;  // would become a boolean
  explicit TJSONValue(TJSONNumber Value) : FValue(std::move(Value)) {}
  explicit TJSONValue(TJSONArray Value) : FValue(std::move(Value)) {}
  explicit TJSONValue(TJSONObject Value) : FValue(std::move(Value)) {}
  TJSONValue(TJSONValue&&) noexcept = default;
  TJSONValue& operator=(TJSONValue&&) noexcept;
  ~TJSONValue();
  /// @}

  /// Whether this is the JSON null, as a value built from nothing is.
  bool IsNull() const { return std::holds_alternative<std::monostate>(FValue); }

  /// Each gives the content when the value is of that kind, else null. Borrowed from this value. @{
  const bool* AsBoolean() const { return std::get_if<bool>(&FValue); }
  const std::string* AsString() const { return std::get_if<std::string>(&FValue); }
  const TJSONNumber* AsNumber() const { return std::get_if<TJSONNumber>(&FValue); }
  const TJSONArray* AsArray() const { return std::get_if<TJSONArray>(&FValue); }
  const TJSONObject* AsObject() const { return std::get_if<TJSONObject>(&FValue); }
  TJSONArray* AsArray() { return std::get_if<TJSONArray>(&FValue); }
  TJSONObject* AsObject() { return std::get_if<TJSONObject>(&FValue); }
  /// @}

 private:
  void ReleaseChildren() noexcept;
  std::variant<std::monostate, bool, std::string, TJSONNumber, TJSONArray, TJSONObject> FValue;
};

/// A member of an object.
struct TJSONPair {
  /// The name as read, unescaped, and its value. @{
  std::string Name;
  TJSONValue Value;
  /// @}
};

/// How JSON text is laid out. `Compact` has no blanks at all; `Pretty` puts every member and element on a line of its
/// own, indented by two blanks a level, LF between lines, and one blank behind each colon.
enum class TJSONLayout : std::uint8_t { Compact, Pretty };
/// JSON text of a value. Raises TBeamError when the tree is deeper than MaxJSONDepth. @{
OXSUPERAPI_EXPORT std::string PrintJSON(const TJSONValue& Value, TJSONLayout Layout);
OXSUPERAPI_EXPORT std::string PrintJSON(const TJSONObject& Value, TJSONLayout Layout);
OXSUPERAPI_EXPORT std::string PrintJSON(const TJSONArray& Value, TJSONLayout Layout);
/// @}

/// Appends `Text` as a JSON string, quotes included: `"`, `\` and the control characters are escaped, all else stands
/// as it is.
OXSUPERAPI_EXPORT void AppendJSONString(std::string& Out, std::string_view Text);

/// The JSON text reader of the host.
class OXSUPERAPI_EXPORT TJSONParser {
 public:
  virtual ~TJSONParser() = default;
  /// The document, or null when `Text` is not JSON. Must not raise on bad input. Expected of an implementation:
  /// encoding validated, numbers kept as text, members in order with repetitions, a byte order mark skipped, nesting
  /// over MaxJSONDepth refused, a lone surrogate escape read as U+FFFD, nothing but white space behind the value.
  virtual std::unique_ptr<TJSONValue> Parse(std::string_view Text) = 0;
};

}  // namespace oxSuperAPI
