#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>

#include "oxSuperAPI/testing/uFakeJsonParser.h"

namespace oxSuperAPI {
namespace {

std::string Printed(std::string_view Text) {
  const auto Value = TFakeJSONParser().Parse(Text);
  return Value ? PrintJSON(*Value, TJSONLayout::Compact) : "refused";
}

// Texts on which readers may differ. Escapes of lone surrogates are read as U+FFFD and numbers of any size are kept;
// what is not UTF-8 is refused.
const std::string AcceptedByChoice =
    " number_double_huge_neg_exp number_huge_exp number_neg_int_huge_exp number_pos_double_huge_exp "
    "number_real_neg_overflow number_real_pos_overflow number_real_underflow number_too_big_neg_int "
    "number_too_big_pos_int number_very_big_negative_int object_key_lone_2nd_surrogate "
    "string_1st_surrogate_but_2nd_missing string_1st_valid_surrogate_2nd_invalid "
    "string_incomplete_surrogate_and_escape_valid string_incomplete_surrogate_pair "
    "string_incomplete_surrogates_escape_valid string_invalid_lonely_surrogate string_invalid_surrogate "
    "string_inverted_surrogates_U+1D11E string_lone_second_surrogate structure_500_nested_arrays "
    "structure_UTF-8_BOM_empty_object ";

TEST(FakeJSONParser, AgreesWithThePublicVectors) {
  const std::filesystem::path Folder = std::string(SHARED_DIR) + "/vectors/json";
  if (!std::filesystem::is_directory(Folder)) GTEST_SKIP() << "no vectors in " << Folder;
  std::map<char, int> Seen;
  for (const auto& Entry : std::filesystem::directory_iterator(Folder)) {
    const std::string Name = Entry.path().filename().string();
    std::ifstream File(Entry.path(), std::ios::binary);
    const std::string Text{std::istreambuf_iterator<char>(File), {}};
    const bool Expected =
        Name[0] == 'y' || (Name[0] == 'i' && AcceptedByChoice.find(" " + Entry.path().stem().string().substr(2) +
                                                                   " ") != std::string::npos);
    EXPECT_EQ(TFakeJSONParser().Parse(Text) != nullptr, Expected) << Name;
    ++Seen[Name[0]];
  }
  EXPECT_GT(Seen['y'], 50);
  EXPECT_GT(Seen['n'], 100);
  EXPECT_GT(Seen['i'], 20);
}

TEST(FakeJSONParser, KeepsWhatADocumentSays) {
  using namespace std::string_literals;
  const std::pair<std::string, std::string> Cases[] = {
      {"\xEF\xBB\xBF {\"b\" : 1.50, \"a\":1E400,\"b\":-0 }\r\n", R"({"b":1.50,"a":1E400,"b":-0})"},
      {R"([true,false,null,"",{},[]])", R"([true,false,null,"",{},[]])"},
      {R"("\u0041\/\b\f\n\r\t\"\\")", R"("A/\b\f\n\r\t\"\\")"},
      {R"("\u00e9\u20ac\ud83d\ude00")", "\"\u00E9\u20AC\U0001F600\""},
      {R"(["\ud83d","\ude00x","\ud83d\u0041","\ud83d\ud83d\ude00"])",
       "[\"\uFFFD\",\"\uFFFDx\",\"\uFFFDA\",\"\uFFFD\U0001F600\"]"},
      {R"("\u0000")", R"("\u0000")"},
      {"[1]\0"s, "refused"},
      {"\"a\0b\""s, "refused"},
      {"", "refused"},
      {"\"raw\nbreak\"", "refused"},
      {"{\"a\":1} x", "refused"},
      {"\"\xC0\x80\"", "refused"},
      {"\"\xED\xA0\x80\"", "refused"},
      {"\"\xF4\x90\x80\x80\"", "refused"},
      {"\"\xE2\x82\"", "refused"},
      {"\"cut\\u00", "refused"},
      {"\"cut\\ud83d\\u00\"", "refused"}};
  for (const auto& [Text, Expected] : Cases) EXPECT_EQ(Printed(Text), Expected) << Text;
}

TEST(FakeJSONParser, RefusesNestingBeyondTheLimit) {
  const auto Nested = [](std::size_t Depth) { return std::string(Depth, '[') + std::string(Depth, ']'); };
  EXPECT_EQ(Printed(Nested(MaxJSONDepth)), Nested(MaxJSONDepth));
  EXPECT_EQ(Printed(Nested(MaxJSONDepth + 1)), "refused");
  EXPECT_EQ(Printed(std::string(1'000'000, '[')), "refused");
  std::string Siblings = "[";
  for (std::size_t Count = 0; Count <= MaxJSONDepth; ++Count) Siblings += "[],";
  EXPECT_NE(Printed(Siblings + "0]"), "refused") << "brothers are no nesting";
}

TEST(FakeJSONParser, SurvivesEveryCutOfADocument) {
  const std::string Whole = R"({"a":[1.5e+3,"\ud83d\ude00é",true,null],"b":{"c":false}})";
  for (std::size_t Size = 0; Size < Whole.size(); ++Size) {
    const std::vector<char> Cut(Whole.begin(), Whole.begin() + static_cast<std::ptrdiff_t>(Size));
    EXPECT_EQ(TFakeJSONParser().Parse({Cut.data(), Cut.size()}), nullptr) << Size;
  }
}

}  // namespace
}  // namespace oxSuperAPI
