#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "oxSuperAPI/host/uBeamError.h"
#include "oxSuperAPI/host/uHostJsonBlock.h"
#include "oxSuperAPI/host/uHostJsonContent.h"

namespace oxSuperAPI {

class TJSONMembers;
class TJSONValue;

/// Deeper nesting neither parses nor prints: everything that walks a tree recurses.
inline constexpr std::size_t MaxJSONDepth = 512;

/// A JSON object: an ordered list of members. Names may repeat and keep their order, since the service reads and the
/// library writes objects with repeated names.
class OXSUPERAPI_EXPORT TJSONObject {
 public:
  /// Movable, not copyable: a tree has one owner. @{
  TJSONObject() : FContent(TJSONKind::Object, nullptr, true) {}
  TJSONObject(TJSONObject&& Other) noexcept : FContent(std::exchange(Other.FContent, TJSONObject().FContent)) {}
  TJSONObject& operator=(TJSONObject&& Other) noexcept;
  ~TJSONObject();
  /// @}

  /// Appends a member, whether or not one of that name exists. The name is copied. The reference holds until the next
  /// Append.
  TJSONValue& Append(std::string_view Name, TJSONValue Value);
  /// The first member of exactly this name, or null. Borrowed from this object. At once in an object that was parsed,
  /// of up to TJSONNames::MaxIndexed members and below the root; elsewhere one name after the other is looked at.
  const TJSONValue* Find(const TJSONKey& Key) const;

  /// The members in order, repeated names included. Borrowed from this object until the next Append. @{
  TJSONMembers Members() const;
  std::size_t Count() const { return Block() ? Block()->Count : 0; }
  bool IsEmpty() const { return Count() == 0; }
  /// @}

 private:
  friend class TJSONMemberFinder;
  friend class TJSONValue;
  explicit TJSONObject(const TJSONContent& Content) : FContent(Content) {}
  TJSONBlock* Block() const { return FContent.Pointer<TJSONBlock>(); }

  TJSONContent FContent;
};

/// A JSON array.
class OXSUPERAPI_EXPORT TJSONArray {
 public:
  /// Movable, not copyable: a tree has one owner. @{
  TJSONArray() : FContent(TJSONKind::Array, nullptr, true) {}
  TJSONArray(TJSONArray&& Other) noexcept : FContent(std::exchange(Other.FContent, TJSONArray().FContent)) {}
  TJSONArray& operator=(TJSONArray&& Other) noexcept;
  ~TJSONArray();
  /// @}

  /// The reference holds until the next Append.
  TJSONValue& Append(TJSONValue Value);
  /// Null when `Index` is not below `Count()`. Borrowed from this array.
  const TJSONValue* At(std::size_t Index) const;

  /// The elements in order. Borrowed from this array until the next Append. @{
  std::span<const TJSONValue> Elements() const;
  std::size_t Count() const { return Block() ? Block()->Count : 0; }
  bool IsEmpty() const { return Count() == 0; }
  /// @}

 private:
  friend class TJSONValue;
  explicit TJSONArray(const TJSONContent& Content) : FContent(Content) {}
  TJSONBlock* Block() const { return FContent.Pointer<TJSONBlock>(); }

  TJSONContent FContent;
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
  TJSONValue() : FPlain{} {}  ///< null
  /// A value of the argument's kind. A text is copied (std::length_error for 4 GiB and more), a container taken over.
  /// A `const char*` is refused: it would become a boolean. @{
  explicit TJSONValue(std::same_as<bool> auto Value) : FPlain{Value ? TJSONKind::True : TJSONKind::False} {}
  explicit TJSONValue(std::string_view Value) : FPlain{TJSONContent::Owning(TJSONKind::String, Value)} {}
  explicit TJSONValue(const char* Value) = delete;  // would become a boolean
  explicit TJSONValue(TJSONNumber Value) : FPlain{TJSONContent::Owning(TJSONKind::Number, Value.Text)} {}
  explicit TJSONValue(TJSONArray Value) : FArray(std::move(Value)) {}
  explicit TJSONValue(TJSONObject Value) : FObject(std::move(Value)) {}
  TJSONValue(TJSONValue&& Other) noexcept : TJSONValue(Other.Take()) {}
  TJSONValue& operator=(TJSONValue&& Other) noexcept;
  ~TJSONValue() {
    if (Content().OwnsMemory()) Release();
  }
  /// @}

  /// What it is; null when built from nothing. @{
  TJSONKind Kind() const { return Content().Kind(); }
  bool IsNull() const { return Kind() == TJSONKind::Null; }
  /// @}

  /// Each gives the content when the value is of that kind, else nothing. Borrowed: it holds until this value is moved,
  /// replaced or destroyed. @{
  std::optional<bool> AsBoolean() const {
    if (Kind() != TJSONKind::True && Kind() != TJSONKind::False) return std::nullopt;
    return Kind() == TJSONKind::True;
  }
  std::optional<std::string_view> AsString() const {
    return Kind() == TJSONKind::String ? std::optional(Content().Text()) : std::nullopt;
  }
  std::optional<TJSONNumber> AsNumber() const {
    return Kind() == TJSONKind::Number ? std::optional(TJSONNumber{Content().Text()}) : std::nullopt;
  }
  const TJSONArray* AsArray() const { return Kind() == TJSONKind::Array ? &FArray : nullptr; }
  const TJSONObject* AsObject() const { return Kind() == TJSONKind::Object ? &FObject : nullptr; }
  TJSONArray* AsArray() { return Kind() == TJSONKind::Array ? &FArray : nullptr; }
  TJSONObject* AsObject() { return Kind() == TJSONKind::Object ? &FObject : nullptr; }
  /// @}

 private:
  friend class TJSONArray;
  friend class TJSONObject;
  friend class TJSONTreeBuilder;
  friend struct TJSONBlock;

  // Takes over what the content owns.
  explicit TJSONValue(const TJSONContent& Content) noexcept { Hold(Content); }
  void Hold(const TJSONContent& Content) noexcept {
    if (Content.Kind() == TJSONKind::Array)
      new (&FArray) TJSONArray(Content);
    else if (Content.Kind() == TJSONKind::Object)
      new (&FObject) TJSONObject(Content);
    else
      new (&FPlain) TPlain{Content};
  }
  // All three begin alike, so this may be read whichever it is.
  const TJSONContent& Content() const { return FPlain.Content; }
  // With what it owns; this is null then.
  TJSONContent Take() noexcept {
    const TJSONContent Result = Content();
    Hold({});
    return Result;
  }
  void Release() noexcept;

  struct TPlain {
    TJSONContent Content;
  };
  union {
    TPlain FPlain;
    TJSONArray FArray;
    TJSONObject FObject;
  };
};
static_assert(sizeof(TJSONValue) == sizeof(TJSONContent));

/// A member of an object. Refers to it.
class TJSONPair {
 public:
  /// The member of a block at `Index`.
  TJSONPair(TJSONBlock* Block, std::size_t Index)
      : FName(Block->Names->List() + Index), FValue(Block->Values() + Index) {}

  /// The name as read, unescaped, and its value. Borrowed from the object. @{
  std::string_view Name() const { return FName->Text(); }
  const TJSONValue& Value() const { return *FValue; }
  /// @}

 private:
  const TJSONContent* FName;
  const TJSONValue* FValue;
};

/// The members of an object, to be gone through. Refers to it.
class TJSONMembers {
 public:
  /// From one to the next.
  class TIterator {
   public:
    /// As the standard library asks of an input iterator. @{
    using value_type = TJSONPair;
    using difference_type = std::ptrdiff_t;

    TIterator(TJSONBlock* Block, std::size_t Index) : FBlock(Block), FIndex(Index) {}
    TJSONPair operator*() const { return {FBlock, FIndex}; }
    TIterator& operator++() {
      ++FIndex;
      return *this;
    }
    TIterator operator++(int) { return {FBlock, FIndex++}; }
    bool operator==(const TIterator&) const = default;
    /// @}

   private:
    TJSONBlock* FBlock;
    std::size_t FIndex;
  };

  /// The members of a block; of null there are none.
  explicit TJSONMembers(TJSONBlock* Block) : FBlock(Block) {}

  /// As of a std::span. @{
  std::size_t size() const { return FBlock ? FBlock->Count : 0; }
  bool empty() const { return size() == 0; }
  TJSONPair operator[](std::size_t Index) const { return {FBlock, Index}; }
  TIterator begin() const { return {FBlock, 0}; }
  TIterator end() const { return {FBlock, size()}; }
  /// @}

 private:
  TJSONBlock* FBlock;
};

inline TJSONMembers TJSONObject::Members() const {
  return TJSONMembers(Block());
}

[[gnu::always_inline]] inline const TJSONValue* TJSONObject::Find(const TJSONKey& Key) const {
  TJSONBlock* const Mine = Block();
  if (!Mine) return nullptr;
  const std::size_t At = Mine->Names->Find(Key, Mine->Count);
  return At < Mine->Count ? Mine->Values() + At : nullptr;
}

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
