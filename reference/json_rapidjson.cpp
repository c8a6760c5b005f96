#include "oxSuperAPI/reference/json_rapidjson.h"

#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include <cstdlib>
#include <new>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace oxSuperAPI {

namespace {

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
/// RapidJSON counts in 32 bits.
constexpr std::size_t MaxTextSize = 1u << 30;

/// RapidJSON's own allocator hands out null when memory ends, and its reader writes there.
struct TAllocator {
  static const bool kNeedFree = true;
  void* Malloc(std::size_t Size) { return Realloc(nullptr, 0, Size); }
  void* Realloc(void* Block, std::size_t, std::size_t Size) {
    if (Size == 0) {
      std::free(Block);
      return nullptr;
    }
    void* const Result = std::realloc(Block, Size);
    if (!Result) throw std::bad_alloc();
    return Result;
  }
  static void Free(void* Block) { std::free(Block); }
};

/// The second half of a pair that stands alone comes out of RapidJSON as the bytes ED B0..BF xx, which are not UTF-8.
/// The text itself cannot hold them, since its encoding is validated.
std::string WithoutSurrogates(const char* Data, std::size_t Size) {
  std::string Result(Data, Size);
  for (std::size_t At = Result.find('\xED'); At != std::string::npos; At = Result.find('\xED', At + 1))
    if (At + 2 < Result.size() && static_cast<unsigned char>(Result[At + 1]) >= 0xA0)
      Result.replace(At, 3, "\xEF\xBF\xBD");
  return Result;
}

/// Builds the tree. A container is reached through a pointer into its parent, which holds because nothing is appended
/// to the parent while the container is open.
class TBuilder {
 public:
  /// With `Numbers`, those texts stand for the numbers of the document, in its order.
  TBuilder(TJSONValue& Root, const std::vector<std::string>* Numbers) : FRoot(Root), FNumbers(Numbers) {}

  bool Null() { return Put(TJSONValue()); }
  bool Bool(bool Value) { return Put(TJSONValue(Value)); }
  bool RawNumber(const char* Data, rapidjson::SizeType Size, bool) {
    if (!FNumbers) return Put(TJSONValue(TJSONNumber{std::string(Data, Size)}));
    return FNextNumber < FNumbers->size() && Put(TJSONValue(TJSONNumber{(*FNumbers)[FNextNumber++]}));
  }
  bool String(const char* Data, rapidjson::SizeType Size, bool) {
    return Put(TJSONValue(WithoutSurrogates(Data, Size)));
  }
  bool Key(const char* Data, rapidjson::SizeType Size, bool) {
    FName = WithoutSurrogates(Data, Size);
    return true;
  }
  bool StartObject() { return Put(TJSONValue(TJSONObject()), true); }
  bool StartArray() { return Put(TJSONValue(TJSONArray()), true); }
  bool EndObject(rapidjson::SizeType) { return Close(); }
  bool EndArray(rapidjson::SizeType) { return Close(); }

  // Numbers come as text only.
  bool Int(int) { return false; }
  bool Uint(unsigned) { return false; }
  bool Int64(std::int64_t) { return false; }
  bool Uint64(std::uint64_t) { return false; }
  bool Double(double) { return false; }

 private:
  bool Put(TJSONValue Value, bool IsContainer = false) {
    if (IsContainer && FOpen.size() == MaxJSONDepth) return false;
    TJSONValue* Place = &FRoot;
    if (FOpen.empty())
      FRoot = std::move(Value);
    else if (TJSONObject* const Object = FOpen.back()->AsObject())
      Place = &Object->Append(std::move(FName), std::move(Value));
    else
      Place = &FOpen.back()->AsArray()->Append(std::move(Value));
    if (IsContainer) FOpen.push_back(Place);
    return true;
  }
  bool Close() {
    FOpen.pop_back();
    return true;
  }

  TJSONValue& FRoot;
  const std::vector<std::string>* FNumbers;
  std::size_t FNextNumber = 0;
  std::vector<TJSONValue*> FOpen;
  std::string FName;
};

rapidjson::ParseErrorCode Read(std::string_view Text, const std::vector<std::string>* Numbers, TJSONValue& Root) {
  constexpr unsigned Flags =
      rapidjson::kParseValidateEncodingFlag | rapidjson::kParseNumbersAsStringsFlag | rapidjson::kParseIterativeFlag;
  rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, TAllocator> Reader;
  rapidjson::MemoryStream Stream(Text.data(), Text.size());
  TBuilder Builder(Root, Numbers);
  return Reader.Parse<Flags>(Stream, Builder).Code();
}

/// The code unit of the "\uXXXX" with which `Text` begins.
std::optional<unsigned> EscapedUnit(std::string_view Text) {
  if (Text.size() < 6 || Text[0] != '\\' || Text[1] != 'u') return std::nullopt;
  unsigned Unit = 0;
  for (const char Digit : Text.substr(2, 4)) {
    const std::size_t Value =
        std::string_view("0123456789abcdef").find(static_cast<char>(Digit >= 'A' && Digit <= 'F' ? Digit + 32 : Digit));
    if (Value == std::string_view::npos) return std::nullopt;
    Unit = Unit * 16 + static_cast<unsigned>(Value);
  }
  return Unit;
}
bool IsFirstHalf(std::optional<unsigned> Unit) {
  return Unit && *Unit >= 0xD800 && *Unit <= 0xDBFF;
}
bool IsSecondHalf(std::optional<unsigned> Unit) {
  return Unit && *Unit >= 0xDC00 && *Unit <= 0xDFFF;
}

/// -? (0 | [1-9][0-9]*) (. [0-9]+)? ([eE] [+-]? [0-9]+)?
bool IsNumber(std::string_view Text) {
  const auto Skip = [&](std::string_view Any) {
    const bool Found = !Text.empty() && Any.find(Text[0]) != std::string_view::npos;
    if (Found) Text.remove_prefix(1);
    return Found;
  };
  const auto SkipDigits = [&] {
    const std::size_t End = std::min(Text.find_first_not_of("0123456789"), Text.size());
    Text.remove_prefix(End);
    return End > 0;
  };
  Skip("-");
  if (!Skip("0") && !SkipDigits()) return false;
  if (Skip(".") && !SkipDigits()) return false;
  if (Skip("eE")) {
    Skip("+-");
    if (!SkipDigits()) return false;
  }
  return Text.empty();
}

/// What RapidJSON refuses although it is JSON: first halves of surrogate pairs that stand alone become \uFFFD, and
/// every number becomes 0, its own text going to `Numbers`. None when a number is malformed.
std::optional<std::string> Repair(std::string_view Text, std::vector<std::string>& Numbers) {
  std::string Result;
  Result.reserve(Text.size());
  bool InString = false;
  for (std::size_t At = 0; At < Text.size();) {
    std::string_view Piece = Text.substr(At, 1);
    std::string_view Written = Piece;
    if (InString && Piece[0] == '\\') {
      const auto Unit = EscapedUnit(Text.substr(At));
      const bool IsPair = IsFirstHalf(Unit) && IsSecondHalf(EscapedUnit(Text.substr(At + 6)));
      Written = Piece = Text.substr(At, IsPair ? 12 : Unit ? 6 : 2);
      if (IsFirstHalf(Unit) && !IsPair) Written = "\\uFFFD";
    } else if (Piece[0] == '"') {
      InString = !InString;
    } else if (!InString && (Piece[0] == '-' || (Piece[0] >= '0' && Piece[0] <= '9'))) {
      Piece = Text.substr(At, Text.find_first_not_of("+-.0123456789eE", At) - At);
      if (!IsNumber(Piece)) return std::nullopt;
      Numbers.emplace_back(Piece);
      Written = "0";
    }
    Result += Written;
    At += Piece.size();
  }
  return Result;
}

}  // namespace

std::unique_ptr<TJSONValue> TJSONRapidJson::Parse(std::string_view Text) {
  if (Text.starts_with(ByteOrderMark)) Text.remove_prefix(ByteOrderMark.size());
  // RapidJSON takes NUL for the end of the text.
  if (Text.size() > MaxTextSize || Text.find('\0') != std::string_view::npos) return nullptr;

  auto Root = std::make_unique<TJSONValue>();
  auto Error = Read(Text, nullptr, *Root);
  if (Error == rapidjson::kParseErrorStringUnicodeSurrogateInvalid || Error == rapidjson::kParseErrorNumberTooBig) {
    *Root = TJSONValue();
    std::vector<std::string> Numbers;
    const auto Repaired = Repair(Text, Numbers);
    if (!Repaired) return nullptr;
    Error = Read(*Repaired, &Numbers, *Root);
  }
  if (Error != rapidjson::kParseErrorNone) return nullptr;
  return Root;
}

}  // namespace oxSuperAPI
