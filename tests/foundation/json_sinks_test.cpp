#include "oxSuperAPI/foundation/uBeamJSONSinks.h"

#include <gtest/gtest.h>

#include <limits>

namespace oxSuperAPI {
namespace {

constexpr bool AlwaysAdd = true;

// A description written to all sinks; they must agree.
template <class Describe>
std::string Written(Describe Write) {
  TJSONObject Object;
  TJSONObjectHelper Helper(Object);
  Write(Helper);
  const std::string Text = JSONText("{}", Write);
  TJSONTextCounter Counter;
  Counter.Root(Write);
  EXPECT_EQ(Counter.Size(), Text.size());
  EXPECT_EQ(PrintJSON(Object, TJSONLayout::Pretty), Text);
  return PrintJSON(Object, TJSONLayout::Compact);
}

TEST(JsonSinks, EachOperationHasItsOwnRuleForWhatIsLeftOut) {
  EXPECT_EQ(Written([](auto& Json) { Json.AddPair("n", 0.004).AddPair("n", -0.0099999).AddPair("", 1.0, AlwaysAdd); }),
            "{}");
  EXPECT_EQ(Written([](auto& Json) { Json.AddPair("n", 0.004, AlwaysAdd).AddPair("n", -0.01).AddPair("n", 0.01); }),
            R"({"n":"0","n":"-0.01","n":"0.01"})");
  EXPECT_EQ(Written([](auto& Json) { Json.AddPair("", 7).AddPair("n", 0).AddPair("", -7, AlwaysAdd); }),
            R"({"n":"0","":"-7"})");
  EXPECT_EQ(Written([](auto& Json) { Json.AddPair("", true).AddPair("n", false).AddPair("", true, AlwaysAdd); }),
            R"({"n":false,"":true})");
  EXPECT_EQ(Written([](auto& Json) {
              Json.AddPairAsFloat("", 1.0).AddPairAsFloat("n", 0.0).AddPairAsFloat("n", -0.001);
              Json.AddPairAsFloat("", 1.0, AlwaysAdd);
            }),
            R"({"n":"0.00","n":"0.00","":"1.00"})");
  EXPECT_EQ(Written([](auto& Json) { Json.AddString("", "x").AddString("n", "").AddString("n", "", AlwaysAdd); }),
            R"({"n":""})");
  EXPECT_EQ(Written([](auto& Json) { Json.AddString("", "x", AlwaysAdd).AddString("n", " "); }), R"({"":"x","n":" "})");
  EXPECT_EQ(Written([](auto& Json) {
              Json.AddStringAsBool("a", "TRUE").AddStringAsBool("b", "yes").AddStringAsBool("c", " true");
              Json.AddStringAsBool("d", "").AddStringAsBool("", "true").AddStringAsBool("e", "", AlwaysAdd);
            }),
            R"({"a":true,"b":false,"c":false,"e":false})");
}

TEST(JsonSinks, ANumberThatIsNoneIsRefused) {
  for (const double Bad : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
    TJSONObject Object;
    EXPECT_THROW(TJSONObjectHelper(Object).AddPair("n", Bad, true), TBeamConversionError);
    EXPECT_THROW(TJSONObjectHelper(Object).AddPairAsFloat("n", Bad), TBeamConversionError);
    EXPECT_TRUE(Object.IsEmpty());
  }
}

TEST(JsonSinks, NestedObjectsAndArraysThatStayEmptyAreTakenBackUnlessAlwaysAdded) {
  using enum TAddNested;
  const auto Nothing = [](auto&) {};
  EXPECT_EQ(Written([&](auto& Json) {
              Json.Object("a", IfFilled, Nothing);
              Json.Array("b", IfFilled, [&](auto& List) { List.Element(IfFilled, Nothing); });
              Json.Object("c", IfFilled, [&](auto& Inner) { Inner.Object("d", IfFilled, Nothing); });
            }),
            "{}");
  EXPECT_EQ(Written([&](auto& Json) {
              Json.AddString("first", "1");
              Json.Object("left out", IfFilled, Nothing);
              Json.Object("empty", Always, Nothing);
              Json.Object("left out", IfFilled, [&](auto& Inner) { Inner.Array("x", IfFilled, Nothing); });
              Json.Array("list", Always, [&](auto& List) {
                List.Element(IfFilled, Nothing);
                List.Element(Always, Nothing);
                List.Element(IfFilled, [](auto& Element) { Element.AddString("x", "\"").AddString("x", "\n"); });
              });
              Json.Object("outer", IfFilled, [&](auto& Outer) { Outer.Object("inner", Always, Nothing); });
              Json.AddPair("last", true);
            }),
            R"({"first":"1","empty":{},"list":[{},{"x":"\"","x":"\n"}],"outer":{"inner":{}},"last":true})");
}

// What fits into the writer's block, what is cut into pieces, and what ends at every position of both.
TEST(JsonSinks, TextsOfEveryLengthAndContentAreWrittenAndCountedAlike) {
  std::string Any;
  for (int Byte = 255; Byte >= 0; --Byte) Any += static_cast<char>(Byte);
  for (std::size_t Length = 0; Length < 70; ++Length)
    for (const char Special : {'x', '"', '\\', '\x1f', '\n', '\x7f', '\xff'})
      for (const std::size_t Position : {std::size_t{0}, Length / 2, Length - 1}) {
        std::string Text(Length, '-');
        if (Position < Length) Text[Position] = Special;
        Written([&](auto& Json) {
          Json.AddString(Text, Text, AlwaysAdd).AddString("n", Text + Any);
          Json.AddString("compact", TBeamText(Text), AlwaysAdd).AddString(Text, TBeamText(Text));
        });
      }
  for (const std::size_t Length : {255, 256, 257, 8'000, 16'383, 16'384, 16'385, 100'000})
    for (const char* Filler : {"x", "\x01"}) {
      std::string Text = Any;
      while (Text.size() < Length) Text += Filler;
      Written([&](auto& Json) {
        Json.AddString("a", Text).AddString(Text, "b").AddPair(Text, true).AddPair(Text, 1234.5);
        Json.AddString("compact", TBeamText(Text)).AddString(Text, TBeamText("b"));
        Json.Object(Text, TAddNested::Always, [](auto&) {});
        Json.Array("list", TAddNested::IfFilled, [&](auto& List) {
          for (int Index = 0; Index < 2'000; ++Index)
            List.Element(TAddNested::Always, [&](auto& Element) {
              Element.AddString("c", "d").AddPair("amount", Index * 99.995).AddString("e", TBeamText("f"));
              Element.AddString("long", TBeamText(Any.substr(0, static_cast<std::size_t>(Index % 50))));
            });
        });
      });
    }
}

struct TTower {
  std::size_t Height;
  template <class Sink>
  void Write(Sink& Json) const {
    const TBeamText Text(std::string(Height % 50, 'x'));
    Json.AddString("a", Text).AddString("b", Text).AddPair("c", 1e3 * static_cast<double>(Height));
    if (Height > 0) Json.Object("o", TAddNested::Always, [this](Sink& Inner) { TTower{Height - 1}.Write(Inner); });
  }
};

TEST(JsonSinks, NestingEndsWhereItDoesForATree) {
  const TTower Highest{MaxJSONDepth - 1}, TooHigh{MaxJSONDepth};
  EXPECT_EQ(WriteToText(Highest), PrintJSON(*WriteToObject(Highest), TJSONLayout::Pretty));
  EXPECT_THROW(WriteToText(TooHigh), TBeamError);
  EXPECT_THROW(PrintJSON(*WriteToObject(TooHigh), TJSONLayout::Pretty), TBeamError);
}

// The count only reserves: a description that says more the second time is written all the same.
TEST(JsonSinks, ADescriptionThatChangesOrRaisesLeavesTheWriterSound) {
  int Run = 0;
  EXPECT_EQ(JSONText("{}",
                     [&](auto& Json) {
                       if (++Run == 2) Json.AddString("late", std::string(20'000, 'x'));
                     })
                .size(),
            20'000u + 16);
  const auto Raise = [](auto&) { throw TBeamError("no"); };
  EXPECT_EQ(JSONText("{}",
                     [&](auto& Json) {
                       EXPECT_THROW(Json.Object("a", TAddNested::IfFilled, Raise), TBeamError);
                       Json.AddPair("b", true);
                     }),
            "{\n  \"b\": true\n}");
}

}  // namespace
}  // namespace oxSuperAPI
