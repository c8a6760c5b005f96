#include "oxSuperAPI/reference/json_problem.h"

#include <rapidjson/error/en.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include <algorithm>

#include "oxSuperAPI/host/uHostJson.h"
#include "oxSuperAPI/reference/json_reading.h"

namespace oxSuperAPI {

namespace {

/// Only looks whether the depth is allowed.
class TDepthWatch : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, TDepthWatch> {
 public:
  bool StartObject() { return ++FDepth <= MaxJSONDepth; }
  bool StartArray() { return ++FDepth <= MaxJSONDepth; }
  bool EndObject(rapidjson::SizeType) { return Close(); }
  bool EndArray(rapidjson::SizeType) { return Close(); }

 private:
  bool Close() {
    --FDepth;
    return true;
  }
  std::size_t FDepth = 0;
};

// RapidJSON's own stream and checks: slower than the tree's, and it tells apart what is wrong.
rapidjson::ParseResult Read(std::string_view Text) {
  constexpr unsigned Flags =
      rapidjson::kParseValidateEncodingFlag | rapidjson::kParseNumbersAsStringsFlag | rapidjson::kParseIterativeFlag;
  rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, TJSONAllocator> Reader;
  rapidjson::MemoryStream Stream(Text.data(), Text.size());
  TDepthWatch Depth;
  return Reader.Parse<Flags>(Stream, Depth);
}

}  // namespace

std::optional<TJSONProblem> FindJSONProblem(std::string_view Text) {
  const std::size_t Start = Text.starts_with(JSONByteOrderMark) ? JSONByteOrderMark.size() : 0;
  const std::size_t Nul = Text.find('\0');
  std::size_t Place = Nul;
  std::string Reason = "A NUL character.";
  if (Text.size() > MaxJSONTextSize) {
    Place = MaxJSONTextSize;
    Reason = "The text is too long.";
  } else if (Nul == std::string_view::npos) {
    rapidjson::ParseResult Result = Read(Text.substr(Start));
    if (std::vector<std::string> Numbers; NeedsJSONRepair(Result.Code()))
      Result = Read(RepairJSON(Text.substr(Start), Numbers));
    if (!Result.IsError()) return std::nullopt;
    Place = std::min(Start + Result.Offset(), Text.size());
    Reason = Result.Code() == rapidjson::kParseErrorTermination
                 ? "Nested deeper than " + std::to_string(MaxJSONDepth) + " levels."
                 : rapidjson::GetParseError_En(Result.Code());
  }
  const std::string_view Before = Text.substr(0, Place);
  const std::string_view InLine = Before.substr(Before.rfind('\n') + 1);  // npos + 1 is 0
  const auto Begins = [](char Byte) { return (static_cast<unsigned char>(Byte) & 0xC0) != 0x80; };
  return TJSONProblem{Place, static_cast<std::size_t>(std::count(Before.begin(), Before.end(), '\n')) + 1,
                      static_cast<std::size_t>(std::count_if(InLine.begin(), InLine.end(), Begins)) + 1, Reason};
}

}  // namespace oxSuperAPI
