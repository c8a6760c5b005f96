#include "oxSuperAPI/reference/editor_text.h"

#include <gtest/gtest.h>

#include "oxSuperAPI/reference/json_problem.h"

namespace oxSuperAPI::tests {
namespace {

using namespace std::string_literals;

TEST(EditorText, LaysJSONOutAndShowsOtherTextInItsLines) {
  const std::pair<std::string, std::string> Cases[] = {
      {R"({"a":[1,{"b":"x,{:\"}"},[ ],{}],"c":1.50})",
       "{\n  \"a\": [\n    1,\n    {\n      \"b\": \"x,{:\\\"}\"\n    },\n    [],\n    {}\n  ],\n  \"c\": 1.50\n}"},
      {"\r\n{ \"a\" :\ttrue }\r\n", "{\n  \"a\": true\n}"},
      {"one\r\ntwo\nthree\r\n", "one\ntwo\nthree\n"},
      {"a\rb\0c\x1b[0m"s, "a\uF70Db\uF700c\uF71B[0m"},
      {"\xFF\xC3", "\uF7FF\uF7C3"},
      {"\"\u202E\"", "\"\uF7E2\uF780\uF7AE\""},  // right to left from here on
      {"\uF700", "\uF7EF\uF79C\uF780"},
      {"\"\u00A0\U0001F600\"", "\"\u00A0\U0001F600\""},
      {"", ""}};
  for (const auto& [Body, Shown] : Cases) EXPECT_EQ(TEditorText(TStringList({Body})).Shown(), Shown);
  EXPECT_LT(TEditorText(TStringList({std::string(500, '[') + std::string(500, ']')})).Shown().size(), 100'000u);
}

TEST(EditorText, KeepsAllThatWasNotChanged) {
  const std::tuple<std::string, std::string, std::string, std::string> Cases[] = {
      {R"({"a":1,"b" : 2,"c":[] })", "1", "17", R"({"a":17,"b" : 2,"c":[] })"},
      {R"({"a":1,"b" : 2 })", "2", "3", R"({"a":1,"b" : 3 })"},
      {R"({"a":1,"b":2})", "  \"b\"", "  \"n\": 0,\n  \"b\"", "{\"a\":1,\"n\": 0,\n  \"b\":2}"},
      {R"({"a":1, "b":2})", "\"a\": 1,\n  ", "", R"({"b":2})"},
      {R"({"a":{}, "b":2})", "{}", "[]", R"({"a":[], "b":2})"},
      {"one\r\ntwo\r\nthree\n", "two", "2\n2", "one\r\n2\r\n2\r\nthree\n"},
      {"\xFF\x01 one \x02 two \xFE", "one \uF702 two", "1 \uF702 2", "\xFF\x01 1 \x02 2 \xFE"},
      {"\u00E9x\u00E9", "x\u00E9", "\u00E8", "\u00E9\u00E8"},
      {R"({"a":1})", "{\n  \"a\": 1\n}", "", ""},
  };
  for (const auto& [Body, From, To, Result] : Cases) {
    const TEditorText Text(TStringList({Body}));
    std::string Edited = Text.Shown();
    ASSERT_NE(Edited.find(From), std::string::npos) << Edited;
    Edited.replace(Edited.find(From), From.size(), To);
    EXPECT_EQ(Text.Edited(Edited).Text(), Result);
    EXPECT_LE(Text.Edited(Edited).Count(), 1u);
  }
  const TStringList Lines({"{\"a\":", "1 }", ""});
  const TStringList Same = TEditorText(Lines).Edited(TEditorText(Lines).Shown());
  EXPECT_EQ(Same.Count(), 3u);
  EXPECT_EQ(Same.Text(), Lines.Text());
}

TEST(EditorText, CanBeEditedInEveryPlace) {
  for (const std::string& Body :
       {"{ \"a\":[1 ,\"\xC3\xA9\\\"\"], \"b\":\t{ }}\r\n"s, "x\r\ny\xC3\n\r\x7F \u2029z\n"s}) {
    const TEditorText Text(TStringList({Body}));
    for (std::size_t At = 0; At <= Text.Shown().size(); ++At) {
      if (At < Text.Shown().size() && (Text.Shown()[At] & 0xC0) == 0x80) continue;
      std::string Edited = Text.Shown();
      Edited.insert(At, "@");
      const TEditorText Again(Text.Edited(Edited));
      // What travels is what was seen; JSON that is none any more is no longer laid out.
      const auto Dense = [](std::string Value) { return std::erase_if(Value, [](char C) { return C <= ' '; }), Value; };
      EXPECT_EQ(Dense(Again.Shown()), Dense(Edited)) << At;
      EXPECT_EQ(std::erase(Edited, '@'), 1u);
      EXPECT_EQ(Text.Edited(Edited).Text(), Body);
    }
  }
}

TEST(JSONProblem, NamesTheFirstPlaceThatIsWrong) {
  const std::tuple<std::string, std::size_t, std::size_t, std::size_t, std::string> Cases[] = {
      {"{\n  \"\u00E9\" 1}", 9, 2, 7, "colon"},
      {"{\"a\":1", 6, 1, 7, "comma or '}'"},
      {"", 0, 1, 1, "empty"},
      {"[1]\0"s, 3, 1, 4, "NUL"},
      {"[1,1e400,x]", 9, 1, 10, "Invalid value"},
      {std::string(600, '['), 512, 1, 513, "deeper"}};
  for (const auto& [Text, Offset, Line, Column, Reason] : Cases) {
    const auto Problem = FindJSONProblem(Text);
    ASSERT_TRUE(Problem) << Text;
    EXPECT_EQ(Problem->Offset, Offset) << Text;
    EXPECT_EQ(std::pair(Problem->Line, Problem->Column), std::pair(Line, Column)) << Text;
    EXPECT_NE(Problem->Reason.find(Reason), std::string::npos) << Problem->Reason;
  }
  for (const char* Accepted : {"\xEF\xBB\xBF{}", "[1e400,\"\\ud800\"]", " 5 "}) EXPECT_FALSE(FindJSONProblem(Accepted));
}

}  // namespace
}  // namespace oxSuperAPI::tests
