#include <gtest/gtest.h>

#include <map>

#include "../reference/temporary_directory.h"
#include "oxSuperAPI/testing/uFakeJsonParser.h"

namespace oxSuperAPI {
namespace {

std::string Printed(std::string_view Text) {
  const auto Value = TFakeJSONParser().Parse(Text);
  return Value ? PrintJSON(*Value, TJSONLayout::Compact) : "refused";
}

TEST(FakeJSONParser, AgreesWithThePublicVectors) {
  const std::filesystem::path Folder = std::string(SHARED_DIR) + "/vectors/json";
  if (!std::filesystem::is_directory(Folder)) GTEST_SKIP() << "no vectors in " << Folder;
  std::map<char, int> Seen;
  for (const auto& Entry : std::filesystem::directory_iterator(Folder)) {
    const std::string Name = Entry.path().filename().string();
    const bool Accepted = TFakeJSONParser().Parse(tests::ReadFile(Entry.path())) != nullptr;
    EXPECT_TRUE(Name[0] == 'i' || Accepted == (Name[0] == 'y')) << Name;  // "i" is for choices: see below
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
      {"{\"cut\":[1.", "refused"},
      {"[tru", "refused"},
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

}  // namespace
}  // namespace oxSuperAPI
