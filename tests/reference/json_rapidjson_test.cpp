#include "oxSuperAPI/reference/json_rapidjson.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

namespace oxSuperAPI::tests {
namespace {

/// The text as the parser understood it, or "refused".
std::string Reprint(std::string_view Text) {
  // A copy without a byte behind it, so that reading too far shows.
  const std::vector<char> Exact(Text.begin(), Text.end());
  const auto Value = TJSONRapidJson().Parse(std::string_view(Exact.data(), Exact.size()));
  return Value ? PrintJSON(*Value, TJSONLayout::Compact) : "refused";
}

TEST(JSONParser, ReadsWhatStandsInTheText) {
  const struct {
    std::string Text, Expected;
  } Cases[] = {
      {" { \"b\" : [ 1 , true , null ] , \"a\" : { } , \"b\" : \"x\" } \r\n\t",
       R"({"b":[1,true,null],"a":{},"b":"x"})"},
      {"\xEF\xBB\xBF[]", "[]"},
      {"5", "5"},
      {R"("\u0041\n\/\ud83d\ude00\u00e9")", "\"A\\n/\xF0\x9F\x98\x80\xC3\xA9\""},
      {R"(["\u0000"])", R"(["\u0000"])"},
      // numbers keep their text
      {"[0,-0,1.50,1E5,1e-400,-1.0e+05,12345678901234567890]", "[0,-0,1.50,1E5,1e-400,-1.0e+05,12345678901234567890]"},
      {"[1E400,-1e999999999999,2.50,{\"a\":1e9999}]", "[1E400,-1e999999999999,2.50,{\"a\":1e9999}]"},
      {"[1E400,\"3\",\"\\\"4\",\"\\\\\",5]", "[1E400,\"3\",\"\\\"4\",\"\\\\\",5]"},
      {"[" + std::string(400, '9') + ",1]", "[" + std::string(400, '9') + ",1]"},
      {"1E400", "1E400"},
      {"[1e400,1e5e5]", "refused"},
      {"[1e400,01]", "refused"},
      {"[1e400,1.]", "refused"},
      {"[1e400,-]", "refused"},
      {"[1e400 2]", "refused"},
      {"[1e400,0x1]", "refused"},
      {"1e400e", "refused"},
      // halves of surrogate pairs that stand alone
      {R"(["\ud800"])", "[\"\xEF\xBF\xBD\"]"},
      {R"(["\uDFFFx\uDC00"])", "[\"\xEF\xBF\xBDx\xEF\xBF\xBD\"]"},
      {R"(["\ud800\ud83d\ude00\ud800\u0041"])",
       "[\"\xEF\xBF\xBD\xF0\x9F\x98\x80\xEF\xBF\xBD"
       "A\"]"},
      {R"({"\ud800":"\\ud800","\udc00":1.50})", "{\"\xEF\xBF\xBD\":\"\\\\ud800\",\"\xEF\xBF\xBD\":1.50}"},
      {R"(["\ud800\n",1e400])", "[\"\xEF\xBF\xBD\\n\",1e400]"},
      {R"(["\ud800\"])", "refused"},
      {R"(["\ud800\u"])", "refused"},
      {R"(["\ud800)", "refused"},
      {"[\"\\ud800\xC3\"]", "refused"},
      {"[\"\xED\x95\x9C\"]", "[\"\xED\x95\x9C\"]"},
      // what is no JSON
      {"", "refused"},
      {" ", "refused"},
      {"{} x", "refused"},
      {"[\"a\nb\"]", "refused"},
      {std::string("{}\0", 3), "refused"},
      {std::string("[\"a\0b\"]", 7), "refused"},
      {"[\"\xED\xA0\x80\"]", "refused"},
      {"[\"\xC0\x80\"]", "refused"},
      {"[\"\xF4\x90\x80\x80\"]", "refused"},
      {"[1,]", "refused"},
      {"{\"a\":1,}", "refused"},
      {"[1] // x", "refused"},
      {"NaN", "refused"},
      {"\xEF\xBB\xBF\xEF\xBB\xBF[]", "refused"},
  };
  for (const auto& [Text, Expected] : Cases) EXPECT_EQ(Reprint(Text), Expected) << Text;
}

TEST(JSONParser, StopsAtTheDepthLimit) {
  const auto Nested = [](std::size_t Depth, std::string Open, std::string Close) {
    std::string Text;
    for (std::size_t Level = 0; Level < Depth; ++Level) Text += Open;
    Text += "1";
    for (std::size_t Level = 0; Level < Depth; ++Level) Text += Close;
    return Text;
  };
  EXPECT_EQ(Reprint(Nested(MaxJSONDepth, "[", "]")), Nested(MaxJSONDepth, "[", "]"));
  EXPECT_EQ(Reprint(Nested(MaxJSONDepth, "{\"a\":", "}")), Nested(MaxJSONDepth, "{\"a\":", "}"));
  EXPECT_EQ(Reprint(Nested(MaxJSONDepth + 1, "[", "]")), "refused");
  EXPECT_EQ(Reprint(Nested(MaxJSONDepth + 1, "{\"a\":", "}")), "refused");
  EXPECT_EQ(Reprint(std::string(10'000'000, '[')), "refused");
}

TEST(JSONParser, SurvivesEveryCutAndEveryChangedByte) {
  const std::string Text = R"({"a":[1.5e3,"\ud83d\ude00\ud800 \u00e9",true,null],"b":{"c":-0,"d":1E400}})";
  ASSERT_NE(Reprint(Text), "refused");
  for (std::size_t At = 0; At < Text.size(); ++At) {
    EXPECT_EQ(Reprint(Text.substr(0, At)), "refused");
    for (int Byte = 0; Byte < 256; ++Byte) {
      std::string Changed = Text;
      Changed[At] = static_cast<char>(Byte);
      const std::string Once = Reprint(Changed);
      EXPECT_EQ(Once == "refused" ? Once : Reprint(Once), Once) << Changed;
    }
  }
}

TEST(JSONParser, DecidesThePublicVectorsOnPurpose) {
  const std::filesystem::path Folder = std::string(SHARED_DIR) + "/vectors/json";
  if (!std::filesystem::exists(Folder)) GTEST_SKIP() << "No public vectors in " << Folder;
  // Of the open cases these are refused: text that is not UTF-8. Numbers of any size, lone surrogate escapes, a byte
  // order mark and 500 levels are accepted.
  const std::set<std::string> Refused = {"i_string_UTF-16LE_with_BOM",
                                         "i_string_UTF-8_invalid_sequence",
                                         "i_string_UTF8_surrogate_U+D800",
                                         "i_string_invalid_utf-8",
                                         "i_string_iso_latin_1",
                                         "i_string_lone_utf8_continuation_byte",
                                         "i_string_not_in_unicode_range",
                                         "i_string_overlong_sequence_2_bytes",
                                         "i_string_overlong_sequence_6_bytes",
                                         "i_string_overlong_sequence_6_bytes_null",
                                         "i_string_truncated-utf-8",
                                         "i_string_utf16BE_no_BOM",
                                         "i_string_utf16LE_no_BOM"};
  std::map<char, int> Count;
  for (const auto& Entry : std::filesystem::directory_iterator(Folder)) {
    const std::string Name = Entry.path().stem().string();
    std::stringstream Text;
    Text << std::ifstream(Entry.path(), std::ios::binary).rdbuf();
    const bool Accept = Name[0] == 'y' || (Name[0] == 'i' && !Refused.contains(Name));
    EXPECT_EQ(Reprint(Text.str()) != "refused", Accept) << Name;
    ++Count[Name[0]];
  }
  EXPECT_GT(Count['y'], 90);
  EXPECT_GT(Count['n'], 180);
  EXPECT_GT(Count['i'], 30);
}

}  // namespace
}  // namespace oxSuperAPI::tests
