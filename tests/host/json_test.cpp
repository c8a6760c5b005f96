#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "oxSuperAPI/host/uHostJsonBuilder.h"

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

TEST(Json, TextsOfEveryLengthAndContentStandAsTheyAre) {
  for (std::size_t Size = 0; Size < 40; ++Size) {
    TJSONObject Object;
    // Each differs from all others in one character only, and the last two in a NUL at the end.
    std::vector<std::string> Texts;
    for (std::size_t At = 0; At < Size; ++At) (Texts.emplace_back(Size, 'x'))[At] = '\xFF';
    Texts.emplace_back(Size, 'x');
    Texts.emplace_back(Texts.back() + '\0');
    for (const std::string& Text : Texts) Object.Append(Text, TJSONValue(Text));
    for (const std::string& Text : Texts) {
      const TJSONValue* Found = Object.Find(Text);
      ASSERT_TRUE(Found) << Size;
      EXPECT_EQ(Found->AsString(), Text);
      EXPECT_EQ(TJSONValue(TJSONNumber{Text}).AsNumber()->Text, Text);
    }
    EXPECT_FALSE(Object.Find(std::string(Size, 'y') + 'y'));
  }
}

TEST(Json, AnObjectMayBeGivenItsOwnNamesAndTextsAgain) {
  TJSONObject Object;
  Object.Append("name", TJSONValue(std::string(20, 'v')));
  for (int Count = 0; Count < 20; ++Count)
    Object.Append(Object.Members()[0].Name(), TJSONValue(*Object.Members()[0].Value().AsString()));
  for (const TJSONPair& Member : Object.Members()) {
    EXPECT_EQ(Member.Name(), "name");
    EXPECT_EQ(Member.Value().AsString(), std::string(20, 'v'));
  }
}

TEST(JsonMemberFinder, FindsTheFirstOfANameInWhateverOrderItIsAsked) {
  std::mt19937 Random(1);
  const auto Name = [&Random] { return std::string(Random() % 2 ? 1 : 16, static_cast<char>('a' + Random() % 20)); };
  for (int Round = 0; Round < 2000; ++Round) {
    TJSONObject Object;
    for (auto Count = Random() % 30; Count > 0; --Count) Object.Append(Name(), TJSONValue());
    TJSONMemberFinder Finder(&Object);
    for (std::size_t Asked = 0; Asked < 40; ++Asked) {
      // By turns at random, and in the order of the members.
      const auto Members = Object.Members();
      const std::string Wanted = Round % 2 && Asked < Members.size() ? std::string(Members[Asked].Name()) : Name();
      const auto First = std::ranges::find(Members, Wanted, &TJSONPair::Name);
      ASSERT_EQ(Finder.Find(Wanted), First == Members.end() ? nullptr : &First->Value()) << Wanted;
    }
  }
  EXPECT_FALSE(TJSONMemberFinder(nullptr).Find("a"));
}

TEST(JsonTreeBuilder, TakesOnlyWhatJSONHasAPlaceFor) {
  TJSONTreeBuilder Tree;
  for (int Round = 0; Round < 2; ++Round) {  // as new after the first
    EXPECT_FALSE(Tree.Take() || Tree.Name("a") || Tree.EndArray() || Tree.EndObject());
    EXPECT_TRUE(Tree.BeginObject());
    EXPECT_FALSE(Tree.Null() || Tree.String("a") || Tree.BeginArray() || Tree.EndArray() || Tree.Take());
    EXPECT_TRUE(Tree.Name("a name that is long") && Tree.BeginArray());
    EXPECT_FALSE(Tree.Name("a") || Tree.EndObject());
    EXPECT_TRUE(Tree.Number("1E400") && Tree.Boolean(false) && Tree.BeginObject() && Tree.EndObject() &&
                Tree.EndArray());
    EXPECT_TRUE(Tree.Name("a name that is long"));
    EXPECT_FALSE(Tree.Name("b") || Tree.EndObject());
    EXPECT_TRUE(Tree.String("a text that is long") && Tree.EndObject());
    EXPECT_FALSE(Tree.Null() || Tree.BeginArray());
    const auto Root = Tree.Take();
    ASSERT_TRUE(Root);
    EXPECT_EQ(PrintJSON(*Root, TJSONLayout::Compact),
              R"({"a name that is long":[1E400,false,{}],"a name that is long":"a text that is long"})");
  }
  for (std::size_t Depth = 0; Depth < MaxJSONDepth; ++Depth) EXPECT_TRUE(Tree.BeginArray());
  EXPECT_FALSE(Tree.BeginArray() || Tree.BeginObject());
}

TEST(JsonTreeBuilder, WhatIsTakenOutOfATreeOutlivesIt) {
  const auto Build = [](auto Fill) {
    TJSONTreeBuilder Tree;
    Fill(Tree);
    return Tree.Take();
  };
  EXPECT_EQ(Build([](auto& Tree) { Tree.String("a root that is only a text"); })->AsString(),
            "a root that is only a text");
  // More names than any table of them has places.
  auto Root = Build([](auto& Tree) {
    Tree.BeginArray();
    for (int Index = 0; Index < 5000; ++Index)
      Tree.BeginObject() && Tree.Name("a long name, number " + std::to_string(Index)) &&
          Tree.String("a long text, number " + std::to_string(Index)) && Tree.EndObject();
    Tree.EndArray();
  });
  TJSONArray Array = std::move(*Root->AsArray());
  Root.reset();
  TJSONObject& Added = *Array.Append(TJSONValue(TJSONObject())).AsObject();
  Added.Append("appended to what was built", TJSONValue(std::string("as long as the others")));
  ASSERT_EQ(Array.Count(), 5001u);
  for (std::size_t Index = 0; Index < 5000; ++Index) {
    const TJSONPair& Member = Array.At(Index)->AsObject()->Members()[0];
    EXPECT_EQ(Member.Name(), "a long name, number " + std::to_string(Index));
    EXPECT_EQ(Member.Value().AsString(), "a long text, number " + std::to_string(Index));
  }
  EXPECT_EQ(PrintJSON(*Array.At(5000), TJSONLayout::Compact),
            R"({"appended to what was built":"as long as the others"})");
}

}  // namespace
}  // namespace oxSuperAPI
