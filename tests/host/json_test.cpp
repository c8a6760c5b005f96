#include <gtest/gtest.h>

#include "oxSuperAPI/host/uHostJson.h"

namespace oxSuperAPI {
namespace {

TJSONValue Nested(std::size_t Depth) {
  TJSONValue Value(TJSONNumber{"1"});
  for (std::size_t Level = 0; Level < Depth; ++Level) {
    TJSONArray Array;
    Array.Append(std::move(Value));
    Value = TJSONValue(std::move(Array));
  }
  return Value;
}

TEST(Json, PrintsMembersInOrderWithRepetitionsAndNumbersAsTheyStood) {
  TJSONObject Object;
  Object.Append("b", TJSONValue(std::string("x")));
  Object.Append("a", TJSONValue(TJSONNumber{"1E5"}));
  Object.Append("b", TJSONValue(true));
  TJSONArray Array;
  Array.Append(TJSONValue());
  Array.Append(TJSONValue(TJSONObject()));
  Array.Append(TJSONValue(TJSONArray()));
  Object.Append("list", TJSONValue(std::move(Array)));
  EXPECT_EQ(PrintJSON(Object, TJSONLayout::Compact), R"({"b":"x","a":1E5,"b":true,"list":[null,{},[]]})");
  EXPECT_EQ(PrintJSON(Object, TJSONLayout::Pretty),
            "{\n  \"b\": \"x\",\n  \"a\": 1E5,\n  \"b\": true,\n  \"list\": [\n    null,\n    {},\n    []\n  ]\n}");
  EXPECT_EQ(*Object.Find("b")->AsString(), "x") << "the first of two";
  EXPECT_EQ(Object.Find("B"), nullptr);
}

TEST(Json, EscapesWhatAStringMayNotHoldAndNothingElse) {
  const struct {
    std::string Text;
    const char* Json;
    // clang-format off
  } Cases[] = {
      {"", R"("")"}, {"a\"b\\c/d", R"("a\"b\\c/d")"}, {"\b\f\n\r\t", R"("\b\f\n\r\t")"},
      {std::string("\0\x1f\x7f", 3), "\"\\u0000\\u001f\x7f\""},
      {"Zo\xC3\xAB \xF0\x9F\x98\x80", "\"Zo\xC3\xAB \xF0\x9F\x98\x80\""}};
  // clang-format on
  for (const auto& Case : Cases) {
    std::string Out = ">";
    AppendJSONString(Out, Case.Text);
    EXPECT_EQ(Out, std::string(">") + Case.Json);
  }
}

TEST(Json, AValueOverTheDepthLimitIsNotPrinted) {
  EXPECT_EQ(PrintJSON(Nested(MaxJSONDepth), TJSONLayout::Compact).size(), 2 * MaxJSONDepth + 1);
  EXPECT_THROW(PrintJSON(Nested(MaxJSONDepth + 1), TJSONLayout::Compact), TBeamError);
}

TEST(Json, ATreeOfAnyDepthIsFreedAndReplacedWithoutRecursion) {
  TJSONValue Deep = Nested(100'000);
  Deep = Nested(100'000);
  Deep = TJSONValue(true);
  EXPECT_TRUE(*Deep.AsBoolean());
}

TEST(Json, AValueCanBeReplacedByAPartOfItself) {
  TJSONObject Object;
  Object.Append("part", TJSONValue(std::string("kept")));
  TJSONArray Array;
  TJSONValue& Element = Array.Append(TJSONValue(std::move(Object)));
  ASSERT_TRUE(Element.AsObject());
  TJSONValue Whole(std::move(Array));
  Whole = std::move(const_cast<TJSONValue&>(*Whole.AsArray()->At(0)));
  ASSERT_TRUE(Whole.AsObject());
  EXPECT_EQ(*Whole.AsObject()->Find("part")->AsString(), "kept");
}

}  // namespace
}  // namespace oxSuperAPI
