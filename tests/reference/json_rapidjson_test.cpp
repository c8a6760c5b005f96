#include "oxSuperAPI/reference/json_rapidjson.h"

#include <map>
#include <random>
#include <set>

#include "oxSuperAPI/testing/uFakeJsonParser.h"
#include "temporary_directory.h"

namespace oxSuperAPI::tests {
namespace {

using namespace std::string_literals;

/// The text as the parser understood it, or "refused".
std::string Reprint(std::string_view Text) {
  // A copy without a byte behind it, so that reading too far shows.
  const std::vector<char> Exact(Text.begin(), Text.end());
  const auto Value = TJSONRapidJson().Parse(std::string_view(Exact.data(), Exact.size()));
  return Value ? PrintJSON(*Value, TJSONLayout::Compact) : "refused";
}

TEST(JSONParser, ReadsWhatStandsInTheTextAndRefusesWhatIsNoJSON) {
  const struct {
    std::string Text, Expected;
  } Changed[] = {
      {" { \"b\" : [ 1 , null ] , \"a\" : { } , \"b\" : \"x\" } \r\n\t", R"({"b":[1,null],"a":{},"b":"x"})"},
      {"\xEF\xBB\xBF[]", "[]"},
      {R"("\u0041\n\/\ud83d\ude00\u00e9")", "\"A\\n/\xF0\x9F\x98\x80\xC3\xA9\""},
      // halves of surrogate pairs that stand alone
      {R"(["\uDFFFx\uDC00"])", "[\"\xEF\xBF\xBDx\xEF\xBF\xBD\"]"},
      {R"(["\ud800\ud83d\ude00\ud800\u0041"])", "[\"\xEF\xBF\xBD\xF0\x9F\x98\x80\xEF\xBF\xBD\x41\"]"},
      {R"({"\ud800":"\\ud800","\udc00":1.50})", "{\"\xEF\xBF\xBD\":\"\\\\ud800\",\"\xEF\xBF\xBD\":1.50}"},
      {R"(["\ud800\n",1e400])", "[\"\xEF\xBF\xBD\\n\",1e400]"},
  };
  for (const auto& [Text, Expected] : Changed) EXPECT_EQ(Reprint(Text), Expected) << Text;
  // clang-format off
  for (const std::string& Kept :  // numbers keep their text
       {"5"s, R"(["\u0000"])"s, "[0,-0,1.50,1E5,1e-400,-1.0e+05,12345678901234567890]"s, "[\"\xED\x95\x9C\"]"s,
        "[1E400,-1e999999999999,2.50,{\"a\":1e9999}]"s, "[1E400,\"3\",\"\\\"4\",\"\\\\\",5]"s, "1E400"s,
        "[" + std::string(400, '9') + ",1]"})
    EXPECT_EQ(Reprint(Kept), Kept);
  for (const std::string& Refused :
       {"[1e400,1e5e5]"s, "[1e400,01]"s, "[1e400,1.]"s, "[1e400,-]"s, "[1e400 2]"s, "[1e400,0x1]"s, "1e400e"s,
        R"(["\ud800\"])"s, R"(["\ud800\u"])"s, R"(["\ud800)"s, "[\"\\ud800\xC3\"]"s, ""s, " "s, "{} x"s, "[\"a\nb\"]"s,
        "{}\0"s, "[\"a\0b\"]"s, "[\"\xED\xA0\x80\"]"s, "[\"\xC0\x80\"]"s, "[\"\xF4\x90\x80\x80\"]"s, "[1,]"s,
        "{\"a\":1,}"s, "[1] // x"s, "NaN"s, "\xEF\xBB\xBF\xEF\xBB\xBF[]"s, std::string(10'000'000, '[')})
    EXPECT_EQ(Reprint(Refused), "refused") << Refused.substr(0, 99);
  // clang-format on
}

TEST(JSONParser, StopsAtTheDepthLimit) {
  for (const auto& [Open, Close] : {std::pair{"["s, "]"s}, std::pair{"{\"a\":"s, "}"s}})
    for (const std::size_t Depth : {MaxJSONDepth, MaxJSONDepth + 1}) {
      std::string Text = "1";
      for (std::size_t Level = 0; Level < Depth; ++Level) Text = Open + Text + Close;
      EXPECT_EQ(Reprint(Text), Depth > MaxJSONDepth ? "refused" : Text);
    }
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

TEST(JSONParser, AgreesWithAnotherOnWhatIsUTF8AndOnAnyMixture) {
  const auto Other = [](const std::string& Text) {
    const auto Value = TFakeJSONParser().Parse(Text);
    return Value ? PrintJSON(*Value, TJSONLayout::Compact) : "refused";
  };
  for (int Lead = 0x80; Lead < 0x100; ++Lead)
    for (const char Second : "\x22\x7F\x80\x8F\x90\x9F\xA0\xBF\xC0")
      for (const char Third : "\x80\xBF\xC0\xFF")
        for (const char Fourth : {'\x7F', '\x80', '\xBF'}) {
          const std::string Text{'"', 'w', 'o', 'r', 'd', static_cast<char>(Lead), Second, Third, Fourth, '"'};
          ASSERT_EQ(Reprint(Text), Other(Text)) << PrintJSON(TJSONValue(Text), TJSONLayout::Compact);
        }
  static constexpr std::string_view Pieces[] = {"[",
                                                "]",
                                                "{",
                                                "}",
                                                ",",
                                                ":",
                                                "\"",
                                                "\"",
                                                "\"",
                                                "\\",
                                                "\\\"",
                                                "\\n",
                                                "\\u0041",
                                                "\\ud83d",
                                                "\\ude00",
                                                " ",
                                                "        ",
                                                "\n",
                                                "\x1F",
                                                "plain text",
                                                "x",
                                                "Zo\xC3\xAB",
                                                "\xF0\x9F\x98\x80",
                                                "\xED\xA0\x80",
                                                "\xC3",
                                                "1",
                                                "-0.5e3",
                                                "1e400",
                                                "true",
                                                "null"};
  std::mt19937 Random(1);
  int Accepted = 0;
  for (int Round = 0; Round < 100'000; ++Round) {
    // Half of them within one string, where few are refused for their form.
    std::string Text = Round % 2 ? "[\"" : "";
    for (auto Count = 1 + Random() % 8; Count > 0; --Count) Text += Pieces[Random() % std::size(Pieces)];
    if (Round % 2) Text += "\"]";
    const std::string Read = Reprint(Text);
    ASSERT_EQ(Read, Other(Text)) << Text;
    Accepted += Read != "refused";
  }
  EXPECT_GT(Accepted, 5'000);
}

TEST(JSONParser, DecidesThePublicVectorsOnPurpose) {
  const std::filesystem::path Folder = std::string(SHARED_DIR) + "/vectors/json";
  if (!std::filesystem::exists(Folder)) GTEST_SKIP() << "No public vectors in " << Folder;
  // Of the open cases these are refused: text that is not UTF-8. Numbers of any size, lone surrogate escapes, a byte
  // order mark and 500 levels are accepted.
  // clang-format off
  const std::set<std::string> Refused = {
      "UTF-16LE_with_BOM", "UTF-8_invalid_sequence", "UTF8_surrogate_U+D800", "invalid_utf-8", "iso_latin_1",
      "lone_utf8_continuation_byte", "not_in_unicode_range", "overlong_sequence_2_bytes", "overlong_sequence_6_bytes",
      "overlong_sequence_6_bytes_null", "truncated-utf-8", "utf16BE_no_BOM", "utf16LE_no_BOM"};
  // clang-format on
  std::map<char, int> Count;
  for (const auto& Entry : std::filesystem::directory_iterator(Folder)) {
    const std::string Name = Entry.path().stem().string();
    const bool IsOpenAndRefused = Name.starts_with("i_string_") && Refused.contains(Name.substr(9));
    const bool Accept = Name[0] == 'y' || (Name[0] == 'i' && !IsOpenAndRefused);
    EXPECT_EQ(Reprint(ReadFile(Entry.path())) != "refused", Accept) << Name;
    ++Count[Name[0]];
  }
  EXPECT_TRUE(Count['y'] > 90 && Count['n'] > 180 && Count['i'] > 30);
}

}  // namespace
}  // namespace oxSuperAPI::tests
