#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "oxSuperAPI/host/uBeamError.h"
#include "oxSuperAPI/host/uHostJsonContent.h"

namespace oxSuperAPI {

class TJSONValue;
class TJSONPair;
struct TJSONBlock;

/// Deeper nesting neither parses nor prints: everything that walks a tree recurses.
inline constexpr std::size_t MaxJSONDepth = 512;

/// A JSON object: an ordered list of members. Names may repeat and keep their order, since the service reads and the
/// library writes objects with repeated names.
class OXSUPERAPI_EXPORT TJSONObject {
 public:
  /// Movable, not copyable: a tree has one owner. @{
  TJSONObject() = default;
  TJSONObject(TJSONObject&& Other) noexcept : FBlock(std::exchange(Other.FBlock, nullptr)) {}
  TJSONObject& operator=(TJSONObject&& Other) noexcept;
  ~TJSONObject();
  /// @}

  /// Appends a member, whether or not one of that name exists. The name is copied. The reference holds until the next
  /// Append.
  TJSONValue& Append(std::string_view Name, TJSONValue Value);
  /// The first member of exactly this name, or null. Borrowed from this object.
  const TJSONValue* Find(const TJSONKey& Key) const;

  /// The members in order, repeated names included. Borrowed from this object until the next Append. @{
  std::span<const TJSONPair> Members() const;
  std::size_t Count() const;
  bool IsEmpty() const { return Count() == 0; }
  /// @}

 private:
  friend class TJSONValue;
  friend class TJSONTreeBuilder;
  TJSONBlock* FBlock = nullptr;
};

/// A JSON array.
class OXSUPERAPI_EXPORT TJSONArray {
 public:
  /// Movable, not copyable: a tree has one owner. @{
  TJSONArray() = default;
  TJSONArray(TJSONArray&& Other) noexcept : FBlock(std::exchange(Other.FBlock, nullptr)) {}
  TJSONArray& operator=(TJSONArray&& Other) noexcept;
  ~TJSONArray();
  /// @}

  /// The reference holds until the next Append.
  TJSONValue& Append(TJSONValue Value);
  /// Null when `Index` is not below `Count()`. Borrowed from this array.
  const TJSONValue* At(std::size_t Index) const;

  /// The elements in order. Borrowed from this array until the next Append. @{
  std::span<const TJSONValue> Elements() const;
  std::size_t Count() const;
  bool IsEmpty() const { return Count() == 0; }
  /// @}

 private:
  friend class TJSONValue;
  friend class TJSONTreeBuilder;
  TJSONBlock* FBlock = nullptr;
};

/// A number as it stood in its document ("3599", "1.50", "1E5"): the tree never passes a number through a double, so
/// nothing is rounded and nothing overflows.
struct TJSONNumber {
  /// Borrowed, from a tree or from whoever makes a value of it. Not checked: the library takes it as it is. @{
  std::string_view Text;
  /// @}
};

/// One value of a JSON document: sixteen bytes, and what does not fit into them. Owns everything below it; movable, not
/// copyable. Destroying it neither recurses nor allocates, so a tree of any depth that a host builds can be freed. What
/// is below a value is handed out as `const` and may share memory with it: it cannot be moved away from there.
class OXSUPERAPI_EXPORT TJSONValue {
 public:
  TJSONValue() = default;  ///< null
  /// A value of the argument's kind. A text is copied (std::length_error for 4 GiB and more), a container taken over.
  /// A `const char*` is refused: it would become a boolean. @{
  explicit TJSONValue(std::same_as<bool> auto Value) : FContent(Value ? TJSONKind::True : TJSONKind::False) {}
  explicit TJSONValue(std::string_view Value) : FContent(TJSONContent::Owning(TJSONKind::String, Value)) {}
  explicit TJSONValue(const char* Value) = delete;  // would become a boolean
  explicit TJSONValue(TJSONNumber Value) : FContent(TJSONContent::Owning(TJSONKind::Number, Value.Text)) {}
  explicit TJSONValue(TJSONArray Value) : FContent(TJSONKind::Array, std::exchange(Value.FBlock, nullptr), true) {}
  explicit TJSONValue(TJSONObject Value) : FContent(TJSONKind::Object, std::exchange(Value.FBlock, nullptr), true) {}
  TJSONValue(TJSONValue&& Other) noexcept : FContent(std::exchange(Other.FContent, {})) {}
  TJSONValue& operator=(TJSONValue&& Other) noexcept;
  ~TJSONValue() {
    if (FContent.OwnsMemory()) Release();
  }
  /// @}

  /// What it is; null when built from nothing. @{
  TJSONKind Kind() const { return FContent.Kind(); }
  bool IsNull() const { return Kind() == TJSONKind::Null; }
  /// @}

  /// Each gives the content when the value is of that kind, else nothing. Borrowed: it holds until this value is moved,
  /// replaced or destroyed. @{
  std::optional<bool> AsBoolean() const {
    if (Kind() != TJSONKind::True && Kind() != TJSONKind::False) return std::nullopt;
    return Kind() == TJSONKind::True;
  }
  std::optional<std::string_view> AsString() const {
    return Kind() == TJSONKind::String ? std::optional(FContent.Text()) : std::nullopt;
  }
  std::optional<TJSONNumber> AsNumber() const {
    return Kind() == TJSONKind::Number ? std::optional(TJSONNumber{FContent.Text()}) : std::nullopt;
  }
  const TJSONArray* AsArray() const { return Inside<const TJSONArray>(this, TJSONKind::Array); }
  const TJSONObject* AsObject() const { return Inside<const TJSONObject>(this, TJSONKind::Object); }
  TJSONArray* AsArray() { return Inside<TJSONArray>(this, TJSONKind::Array); }
  TJSONObject* AsObject() { return Inside<TJSONObject>(this, TJSONKind::Object); }
  /// @}

 private:
  friend class TJSONPair;
  friend class TJSONMemberFinder;
  friend class TJSONObject;
  friend class TJSONTreeBuilder;
  friend struct TJSONBlock;

  explicit TJSONValue(const TJSONContent& Content) : FContent(Content) {}
  // A container begins with its block, as its content does.
  template <class Container>
  static Container* Inside(auto* Value, TJSONKind Kind) {
    return Value->Kind() == Kind ? reinterpret_cast<Container*>(Value) : nullptr;
  }
  void Release() noexcept;

  TJSONContent FContent;
};

/// A member of an object.
class TJSONPair {
 public:
  /// The name as read, unescaped, and its value. Borrowed from the object. @{
  std::string_view Name() const { return FName.FContent.Text(); }
  const TJSONValue& Value() const { return FValue; }
  /// @}

 private:
  friend class TJSONObject;
  friend class TJSONMemberFinder;
  TJSONValue FName;
  TJSONValue FValue;
};

/// Finds members of one object by name, exactly as `TJSONObject::Find` does, and at once as long as they are asked for
/// in the order in which they stand.
class OXSUPERAPI_EXPORT TJSONMemberFinder {
 public:
  /// In nothing when `Object` is null. The object has to outlive the finder and stay as it is.
  explicit TJSONMemberFinder(const TJSONObject* Object) {
    if (Object) FMembers = Object->Members();
  }
  /// The first member of that name, or null. Borrowed from the object.
  [[gnu::always_inline]] const TJSONValue* Find(const TJSONKey& Key) {  // so that the key of a literal is constants
    if (FNext == FMembers.size() || !IsNamed(FNext, Key)) return FindElsewhere(Key);
    const std::uint64_t Hash = Key.Hash();
    if (FPassed.MayHold(Hash)) return FindElsewhere(Key);  // then this may be a repetition
    FPassed.Add(Hash);
    return &FMembers[FNext++].Value();
  }

 private:
  // Which names are in a set: one of 256 bits each, which they may share.
  struct TNames {
    std::array<std::uint64_t, 4> Bits{};
    void Add(std::uint64_t Hash) { Bits[Hash >> 62] |= Bit(Hash); }
    bool MayHold(std::uint64_t Hash) const { return (Bits[Hash >> 62] & Bit(Hash)) != 0; }
    static std::uint64_t Bit(std::uint64_t Hash) { return std::uint64_t{1} << (Hash >> 56 & 63); }
  };

  bool IsNamed(std::size_t At, const TJSONKey& Key) const { return FMembers[At].FName.FContent.IsNamed(Key); }
  const TJSONValue* FindElsewhere(const TJSONKey& Key);

  std::span<const TJSONPair> FMembers;
  std::size_t FNext = 0;           // behind the last one found
  TNames FPassed;                  // those before FNext
  std::array<bool, 256> FMayHold;  // the same of all names, once they were asked for
  bool FKnowsAll = false;
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
  /// over MaxJSONDepth refused, a lone surrogate escape read as U+FFFD, nothing but white space behind the value. A
  /// reader that meets one thing after the other gives them to TJSONTreeBuilder (uHostJsonBuilder.h).
  virtual std::unique_ptr<TJSONValue> Parse(std::string_view Text) = 0;
};

}  // namespace oxSuperAPI
