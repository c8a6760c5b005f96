#include "oxSuperAPI/foundation/uBeamJSONSinks.h"

#include <gtest/gtest.h>

#include <limits>

namespace oxSuperAPI {
namespace {

constexpr bool AlwaysAdd = true;

// A description written to both sinks; they must agree.
template <class Describe>
std::string Written(Describe Write) {
  TJSONObject Object;
  TJSONObjectHelper Helper(Object);
  Write(Helper);
  std::string Text;
  TJSONTextWriter Writer(Text);
  Writer.Root([&](TJSONTextWriter& Json) { Write(Json); });
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

}  // namespace
}  // namespace oxSuperAPI
