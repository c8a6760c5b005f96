#pragma once

#include <compare>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>
#include <utility>

#include "oxSuperAPI/host/uBeamError.h"

namespace oxSuperAPI {

/// What reads as a text: std::string, std::string_view, a literal, TBeamText.
template <class Text>
concept TBeamReadsAsText = std::convertible_to<const Text&, std::string_view> && !std::same_as<Text, std::nullptr_t>;

/// A text in 12 bytes, for records of which a batch holds hundreds of thousands. Texts of up to 11 bytes (dates,
/// numbers, codes) stand in place, all others in a heap block of their size. A value like std::string: copied deeply,
/// assigned and compared like one, handed to whatever takes a std::string_view or a std::string. Whether it stands in
/// JSON as it is was found out when it was assigned.
///
/// It is written as a whole and never edited in place: for more than reading, take a std::string and assign it back.
class OXSUPERAPI_EXPORT TBeamText {
 public:
  /// Empty, or a copy of the text, whatever it holds, NUL included. Raises TBeamRangeError for 4 GB and more. @{
  constexpr TBeamText() noexcept { FBytes[Tag] = MaxInPlace; }
  template <TBeamReadsAsText Text>
  TBeamText(const Text& Content) : TBeamText() {
    Take(Content);
  }
  TBeamText(const TBeamText& Other) : TBeamText() {
    if (Other.IsLong())
      TakeLong(Other.view());
    else
      std::memcpy(FBytes, Other.FBytes, sizeof FBytes);
  }
  TBeamText(TBeamText&& Other) noexcept : TBeamText() { Swap(Other); }
  TBeamText& operator=(TBeamText Other) noexcept {
    Swap(Other);
    return *this;
  }
  template <TBeamReadsAsText Text>
  requires(!std::same_as<Text, TBeamText>) TBeamText& operator=(const Text& Content) {
    Assign(Content);
    return *this;
  }
  constexpr ~TBeamText() {
    if (IsLong()) Release();
  }
  /// @}

  /// The text, NUL-terminated. Holds until the text is assigned or moved. @{
  const char* data() const noexcept { return IsLong() ? Block() + sizeof(std::uint32_t) : FBytes; }
  const char* c_str() const noexcept { return data(); }
  std::string_view view() const noexcept { return {data(), size()}; }
  operator std::string_view() const noexcept { return view(); }
  operator std::string() const { return std::string(view()); }
  /// @}

  /// Bytes, as std::string counts. @{
  std::size_t size() const noexcept {
    return IsLong() ? LongSize() : MaxInPlace - static_cast<unsigned char>(FBytes[Tag]);
  }
  bool empty() const noexcept { return FBytes[Tag] == MaxInPlace; }
  void clear() noexcept { *this = TBeamText(); }
  /// @}

  /// Whether nothing in it needs an escape in JSON.
  bool IsPlainJSON() const noexcept { return FBytes[Tag] != LongToEscape; }

  /// Copies the text to `Out` in blocks of known size, so up to `CopySlack` bytes behind it are overwritten too. Gives
  /// the end of the text. @{
  static constexpr std::size_t CopySlack = 16;
  [[gnu::always_inline]] char* CopyTo(char* Out) const noexcept {
    if (!IsLong()) {
      std::memcpy(Out, FBytes, sizeof FBytes);
      return Out + size();
    }
    const char* const Content = data();
    const std::size_t Size = LongSize();
    for (std::size_t Position = 0; Position < Size; Position += CopySlack)
      std::memcpy(Out + Position, Content + Position, CopySlack);
    return Out + Size;
  }
  /// @}

  /// By bytes, with anything that reads as a text. @{
  template <TBeamReadsAsText Text>
  friend bool operator==(const TBeamText& Left, const Text& Right) {
    return Left.view() == std::string_view(Right);
  }
  template <TBeamReadsAsText Text>
  friend auto operator<=>(const TBeamText& Left, const Text& Right) {
    return Left.view() <=> std::string_view(Right);
  }
  /// @}

  /// The two in a row. @{
  template <TBeamReadsAsText Text>
  friend std::string operator+(const TBeamText& Left, const Text& Right) {
    return Concatenated(Left.view(), Right);
  }
  template <TBeamReadsAsText Text>
  requires(!std::same_as<Text, TBeamText>) friend std::string operator+(const Text& Left, const TBeamText& Right) {
    return Concatenated(Left, Right.view());
  }
  /// @}

  /// Writes the text as it stands.
  template <class Traits>
  friend std::basic_ostream<char, Traits>& operator<<(std::basic_ostream<char, Traits>& Out, const TBeamText& Text) {
    return Out << std::string_view(Text);
  }

 private:
  static constexpr std::size_t Tag = 11;
  static constexpr char MaxInPlace = 11;
  static constexpr char Long = 126, LongToEscape = 127;

  // `Content` may refer into this text. @{
  void Assign(std::string_view Content) { IsLong() ? Replace(Content) : Take(Content); }
  void Replace(std::string_view Content);
  // @}
  // Of a text that owns no block. When memory ends it is as it was.
  void Take(std::string_view Content);
  void TakeLong(std::string_view Content);
  bool TakeShort(std::string_view Content) noexcept;
  template <class Word>
  bool TakeEnds(std::string_view Content) noexcept;

  constexpr bool IsLong() const noexcept { return FBytes[Tag] >= Long; }
  char* Block() const noexcept {
    char* Result;
    std::memcpy(&Result, FBytes, sizeof Result);
    return Result;
  }
  std::size_t LongSize() const noexcept {
    std::uint32_t Result;
    std::memcpy(&Result, Block(), sizeof Result);
    return Result;
  }
  void Release() noexcept;
  void Swap(TBeamText& Other) noexcept {
    char Bytes[sizeof FBytes];
    std::memcpy(Bytes, FBytes, sizeof FBytes);
    std::memcpy(FBytes, Other.FBytes, sizeof FBytes);
    std::memcpy(Other.FBytes, Bytes, sizeof FBytes);
  }
  static std::string Concatenated(std::string_view Left, std::string_view Right);

  // In place, if it needs no escape: the text, and at the end how many bytes it could still take; a text of 11 bytes so
  // ends in NUL. Else: the address of a block, unaligned, and at the end one of the two marks. A block consists of size
  // (32 bits), text and NUL; as many bytes as CopyTo reads can be read.
  alignas(4) char FBytes[12] = {};
};

}  // namespace oxSuperAPI

/// @cond doxygen does not find the scope
template <>
struct std::hash<oxSuperAPI::TBeamText> {
  // That of the same text as std::string.
  std::size_t operator()(const oxSuperAPI::TBeamText& Text) const noexcept {
    return std::hash<std::string_view>()(Text.view());
  }
};
/// @endcond
