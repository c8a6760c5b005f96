#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace oxSuperAPI {

/// Bytes of the well-formed UTF-8 sequence at the front of `Text`, none of it ASCII; 0 when there is none: an overlong
/// form, a surrogate, a code point above U+10FFFF, a piece of a sequence.
std::size_t SequenceLength(std::string_view Text);

/// The end of the plain text that begins at `From`: the first quote, backslash, control character or byte that is not
/// UTF-8, else `End`.
const char* EndOfPlainText(const char* From, const char* End);

/// JSON text as RapidJSON reads it "in situ", but never written to: a string without escapes is handed out where it
/// stands, another is unescaped into a buffer. Checks the encoding of strings; elsewhere only ASCII is JSON. Has to be
/// read itself, no copy of it (rapidjson::StreamTraits): the end of a number is where the stream stands.
class TJSONTextStream {
 public:
  /// Where the last string went.
  struct TStrings {
    /// Room for the string, and the next place in it: null when the string stands in the text. @{
    std::vector<char> Buffer;
    char* Unescaped = nullptr;
    /// @}
  };
  /// Both have to outlive the stream.
  TJSONTextStream(std::string_view Text, TStrings& Strings)
      : FAt(Text.data()), FEnd(Text.data() + Text.size()), FBegin(Text.data()), FStrings(&Strings) {}

  /// What RapidJSON expects of a stream. NUL is the end of the text, or stands in it: `Tell` is then less than its
  /// size.
  /// @{
  using Ch = char;
  char Peek() const { return FAt == FEnd ? '\0' : *FAt; }
  char Take() { return FAt == FEnd ? '\0' : *FAt++; }
  std::size_t Tell() const { return static_cast<std::size_t>(FAt - FBegin); }
  char* PutBegin();
  void Put(char Byte) {
    if (FStrings->Unescaped && FStrings->Unescaped != FStrings->Buffer.data() + FStrings->Buffer.size())
      *FStrings->Unescaped++ = Byte;
  }
  void Flush() {}
  std::size_t PutEnd(const char* Begin) const {
    return static_cast<std::size_t>((FStrings->Unescaped ? FStrings->Unescaped : FAt) - Begin);
  }
  void SkipBlanks() {
    if (FAt != FEnd && IsBlank(*FAt)) SkipManyBlanks();
  }
  /// @}

 private:
  static bool IsBlank(char Byte) { return Byte == ' ' || Byte == '\n' || Byte == '\r' || Byte == '\t'; }
  void SkipManyBlanks();
  char* Unescape(const char* FirstEscape);

  const char* FAt;
  const char* FEnd;
  const char* FBegin;
  TStrings* FStrings;
};

}  // namespace oxSuperAPI
