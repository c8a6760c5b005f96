#pragma once

#include <array>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <string_view>
#include <type_traits>

#include "oxSuperAPI/host/uBeamError.h"

namespace oxSuperAPI {

/// What a JSON value is.
enum class TJSONKind : std::uint8_t { Null, False, True, String, Number, Array, Object };

class TJSONKey;

/// The sixteen bytes of a JSON value or of a member's name: its kind, and a text of up to fifteen bytes or a pointer to
/// what does not fit. Plain data: a copy copies nothing behind the pointer, and whoever keeps one answers for it. Host
/// authors need not know it: see uHostJson.h.
class OXSUPERAPI_EXPORT TJSONContent {
 public:
  /// The longest text that stands inside.
  static constexpr std::size_t MaxInside = 15;

  /// Null or a boolean.
  TJSONContent(TJSONKind Kind = TJSONKind::Null) : TJSONContent(0, 0, TagOf(Kind)) {}
  /// A string or number. A text that does not stand inside is borrowed. Raises std::length_error for 4 GiB and more.
  TJSONContent(TJSONKind Kind, std::string_view Text)
      : TJSONContent(Text.size() > MaxInside ? Outside(TagOf(Kind), Text) : Inside(TagOf(Kind), Text)) {}
  /// The same with a copy of its own of a text that does not stand inside, an array of char made with `new`.
  static TJSONContent Owning(TJSONKind Kind, std::string_view Text);
  /// A container and where its content is, null while it has none.
  TJSONContent(TJSONKind Kind, void* Content, bool IsOwned)
      : TJSONContent(WordOf(Content), 0, TagOf(Kind) | IsOutside | (IsOwned ? IsOwner : 0)) {}

  /// What it is.
  TJSONKind Kind() const { return static_cast<TJSONKind>(Tag() & KindBits); }
  /// Whether the memory behind the pointer is this content's own.
  bool OwnsMemory() const { return (Tag() & (IsOutside | IsOwner)) == (IsOutside | IsOwner); }
  /// Where the text or the container's content is; only where it is not inside.
  template <class Target>
  Target* Pointer() const {
    Target* Result = nullptr;
    std::memcpy(&Result, FWords.data(), sizeof(Result));
    return Result;
  }

  /// The text of a string or number. May refer into this object.
  std::string_view Text() const {
    if (!(Tag() & IsOutside)) return {reinterpret_cast<const char*>(FWords.data()), Tag() >> SizeShift};
    return {Pointer<const char>(), static_cast<std::uint32_t>(FWords[1] >> PayloadShift)};
  }
  /// Whether it is a member's name, and which.
  bool IsNamed(const TJSONKey& Key) const;
  /// The same number for equal texts, and seldom for others.
  std::uint64_t Hash() const { return HashOf({Tag() & IsOutside ? 0 : FWords[0], FWords[1]}); }

 private:
  friend class TJSONKey;
  using TWords = std::array<std::uint64_t, 2>;
  // The last byte is the tag: from its low end three bits of kind, IsOutside, and four bits that are the size of a text
  // inside; outside, only whether the memory is owned.
  static constexpr unsigned KindBits = 7, IsOutside = 8, IsOwner = 16, SizeShift = 4;
  // A text outside has a pointer in the first word; in the second, beside the tag, 32 bits of size and three of its
  // characters, so that texts mostly differ in there.
  static constexpr bool LittleEndian = std::endian::native == std::endian::little;
  static constexpr int TagShift = LittleEndian ? 56 : 0, PayloadShift = LittleEndian ? 0 : 8;
  static constexpr std::uint64_t IgnoredOwner = ~(std::uint64_t{IsOwner} << TagShift);

  // Made as two words at once: bytes that are written one by one and then read as words cost more than all the rest.
  TJSONContent(std::uint64_t First, std::uint64_t Second, unsigned Tag)
      : FWords{First, Second | std::uint64_t{Tag} << TagShift} {}

  static TJSONContent Inside(unsigned Tag, std::string_view Text) {
    const TWords Words = WordsInside(Text);
    return {Words[0], Words[1], Tag | static_cast<unsigned>(Text.size()) << SizeShift};
  }
  static TJSONContent Outside(unsigned Tag, std::string_view Text) {
    if (Text.size() > std::numeric_limits<std::uint32_t>::max())
      throw std::length_error("A JSON text of 4 GiB or more");
    return {WordOf(Text.data()), SecondWordOutside(Text), Tag | IsOutside};
  }

  // The words without the tag. @{
  static constexpr TWords WordsInside(std::string_view Text) {
    if (Text.size() <= 8) return {WordOf(Text), 0};
    return {WordOf(Text.substr(0, 8)), WordOf(Text.substr(8))};
  }
  static constexpr std::uint64_t SecondWordOutside(std::string_view Text) {
    // Names begin and end alike; they differ in between.
    const auto Sample = [&](std::size_t Quarters) {
      return std::uint64_t{static_cast<unsigned char>(Text[Text.size() / 4 * Quarters])} << (24 + 8 * Quarters);
    };
    return (Text.size() | Sample(1) | Sample(2) | Sample(3)) << PayloadShift;
  }
  // @}
  // Of both words, the first one 0 when it is a pointer. With these factors the first eight bits differ for all names
  // of a member of a batch.
  static constexpr std::uint64_t HashOf(const TWords& Words) {
    return (Words[0] * 0x9E3779B97F4A7C15u ^ (Words[1] & IgnoredOwner)) * 0x2A7B67AF6C6AD50Fu;
  }

  // A pointer, or up to eight characters, as they stand in memory.
  static std::uint64_t WordOf(const void* Pointer) {
    std::uint64_t Word = 0;
    std::memcpy(&Word, &Pointer, sizeof(Pointer));
    return Word;
  }
  static constexpr std::uint64_t WordOf(std::string_view Text) {
    const std::size_t Size = Text.size();
    if (std::is_constant_evaluated()) {
      std::array<char, 8> Bytes{};
      for (std::size_t At = 0; At < Size; ++At) Bytes[At] = Text[At];
      return std::bit_cast<std::uint64_t>(Bytes);
    }
    if constexpr (LittleEndian) {
      // The first and the last bytes, which may overlap.
      if (Size >= 4) return Part<std::uint32_t>(Text, 0) | Part<std::uint32_t>(Text, Size - 4) << (8 * (Size - 4));
      if (Size >= 2) return Part<std::uint16_t>(Text, 0) | Part<std::uint16_t>(Text, Size - 2) << (8 * (Size - 2));
      return Size == 1 ? Part<std::uint8_t>(Text, 0) : 0;
    }
    std::uint64_t Word = 0;
    std::memcpy(&Word, Text.data(), Size);
    return Word;
  }
  template <class Number>
  static std::uint64_t Part(std::string_view Text, std::size_t At) {
    Number Result = 0;
    std::memcpy(&Result, Text.data() + At, sizeof(Result));
    return Result;
  }

  static constexpr unsigned TagOf(TJSONKind Kind) { return static_cast<unsigned>(Kind); }
  unsigned Tag() const { return static_cast<unsigned>(FWords[1] >> TagShift & 0xFF); }

  TWords FWords;
};
static_assert(sizeof(TJSONContent) == 16 && sizeof(void*) <= 8);

/// The name of a member that is looked for. Of a literal, everything that a search needs is made at compile time.
class TJSONKey {
 public:
  /// Refers to the text, which has to outlive the search. @{
  template <std::size_t Size>
  consteval TJSONKey(const char (&Literal)[Size]) : TJSONKey(std::string_view(Literal, Size - 1), true) {}
  template <class Name>
  requires(std::convertible_to<const Name&, std::string_view> && !std::is_array_v<Name>) TJSONKey(const Name& Text)
      : TJSONKey(std::string_view(Text), false) {}
  /// @}

  /// The name, and a number that is the same for equal names and seldom for others. @{
  constexpr std::string_view Text() const { return FText; }
  constexpr std::uint64_t Hash() const { return TJSONContent::HashOf(FWords); }
  /// @}
  /// Whether the text is a literal, which no other text can ever have the address of.
  constexpr bool IsLiteral() const { return FIsLiteral; }

 private:
  friend class TJSONContent;
  constexpr TJSONKey(std::string_view Name, bool IsLiteral)
      : FText(Name), FWords(WordsOf(Name)), FIsLiteral(IsLiteral) {}
  static constexpr TJSONContent::TWords WordsOf(std::string_view Name) {
    unsigned Tag = TJSONContent::TagOf(TJSONKind::String);
    TJSONContent::TWords Words{};
    if (IsInside(Name)) {
      Words = TJSONContent::WordsInside(Name);
      Tag |= static_cast<unsigned>(Name.size()) << TJSONContent::SizeShift;
    } else {
      Words[1] = TJSONContent::SecondWordOutside(Name);
      Tag |= TJSONContent::IsOutside;
    }
    Words[1] |= std::uint64_t{Tag} << TJSONContent::TagShift;
    return Words;
  }
  static constexpr bool IsInside(std::string_view Name) { return Name.size() <= TJSONContent::MaxInside; }

  std::string_view FText;
  TJSONContent::TWords FWords;  // as in the content of that text, but for its pointer
  bool FIsLiteral;
};

inline bool TJSONContent::IsNamed(const TJSONKey& Key) const {
  // Characters and size, or pointer, size and samples.
  if (TJSONKey::IsInside(Key.FText)) return FWords[0] == Key.FWords[0] && FWords[1] == Key.FWords[1];
  return (FWords[1] & IgnoredOwner) == Key.FWords[1] &&
         std::memcmp(Pointer<const char>(), Key.FText.data(), Key.FText.size()) == 0;
}

}  // namespace oxSuperAPI
