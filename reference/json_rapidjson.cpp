#include "oxSuperAPI/reference/json_rapidjson.h"

#include <rapidjson/reader.h>

#include <cstdlib>
#include <new>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "oxSuperAPI/host/uHostJsonBuilder.h"
#include "oxSuperAPI/reference/json_reading.h"
#include "oxSuperAPI/reference/json_text_stream.h"

namespace rapidjson {
template <>
inline void SkipWhitespace(oxSuperAPI::TJSONTextStream& Stream) {
  Stream.SkipBlanks();
}
}  // namespace rapidjson

namespace oxSuperAPI {

namespace {

/// Hands what the reader meets to the tree.
class THandler {
 public:
  /// With `Numbers`, those texts stand for the numbers of the document, in its order.
  THandler(const TJSONTextStream::TStrings& Strings, const std::vector<std::string>* Numbers)
      : FStrings(Strings), FNumbers(Numbers) {}

  bool Null() { return FTree.Null(); }
  bool Bool(bool Value) { return FTree.Boolean(Value); }
  // RapidJSON asks the stream where a number is when it has read it, and so is told the end.
  bool RawNumber(const char* End, rapidjson::SizeType Size, bool) {
    if (!FNumbers) return FTree.Number({End - Size, Size});
    return FNextNumber < FNumbers->size() && FTree.Number((*FNumbers)[FNextNumber++]);
  }
  bool String(const char* Data, rapidjson::SizeType Size, bool) {
    return FTree.String(WithoutSurrogates({Data, Size}));
  }
  bool Key(const char* Data, rapidjson::SizeType Size, bool) { return FTree.Name(WithoutSurrogates({Data, Size})); }
  bool StartObject() { return FTree.BeginObject(); }
  bool StartArray() { return FTree.BeginArray(); }
  bool EndObject(rapidjson::SizeType) { return FTree.EndObject(); }
  bool EndArray(rapidjson::SizeType) { return FTree.EndArray(); }

  // Numbers come as text only.
  bool Int(int) { return false; }
  bool Uint(unsigned) { return false; }
  bool Int64(std::int64_t) { return false; }
  bool Uint64(std::uint64_t) { return false; }
  bool Double(double) { return false; }

  std::unique_ptr<TJSONValue> Tree() { return FTree.Take(); }

 private:
  /// The second half of a pair that stands alone comes out of RapidJSON as the bytes ED A0..BF xx, which are not UTF-8.
  /// Only an escape gives them, since the text's encoding is checked.
  std::string_view WithoutSurrogates(std::string_view Text) {
    if (!FStrings.Unescaped || Text.find('\xED') == std::string_view::npos) return Text;
    FText = Text;
    for (std::size_t At = FText.find('\xED'); At != std::string::npos; At = FText.find('\xED', At + 1))
      if (static_cast<unsigned char>(FText[At + 1]) >= 0xA0) FText.replace(At, 3, "\xEF\xBF\xBD");
    return FText;
  }

  TJSONTreeBuilder FTree;
  const TJSONTextStream::TStrings& FStrings;
  std::string FText;
  const std::vector<std::string>* FNumbers;
  std::size_t FNextNumber = 0;
};

rapidjson::ParseErrorCode Read(std::string_view Text, const std::vector<std::string>* Numbers,
                               std::unique_ptr<TJSONValue>& Root) {
  constexpr unsigned Flags = rapidjson::kParseInsituFlag | rapidjson::kParseNumbersAsStringsFlag;
  rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, TJSONAllocator> Reader;
  TJSONTextStream::TStrings Strings;
  TJSONTextStream Stream(Text, Strings);
  THandler Handler(Strings, Numbers);
  const auto Error = Reader.Parse<Flags>(Stream, Handler).Code();
  // RapidJSON takes NUL for the end of the text.
  if (Error == rapidjson::kParseErrorNone && Stream.Tell() == Text.size()) Root = Handler.Tree();
  return Error;
}

}  // namespace

std::unique_ptr<TJSONValue> TJSONRapidJson::Parse(std::string_view Text) {
  if (Text.starts_with(JSONByteOrderMark)) Text.remove_prefix(JSONByteOrderMark.size());
  if (Text.size() > MaxJSONTextSize) return nullptr;

  std::unique_ptr<TJSONValue> Root;
  const auto Error = Read(Text, nullptr, Root);
  if (NeedsJSONRepair(Error)) {
    std::vector<std::string> Numbers;
    Read(RepairJSON(Text, Numbers), &Numbers, Root);
  }
  return Root;
}

}  // namespace oxSuperAPI
