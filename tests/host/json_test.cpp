#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "oxSuperAPI/host/uHostJsonBuilder.h"
#include "oxSuperAPI/host/uHostJsonFinder.h"

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

TEST(JsonTreeBuilder, AnObjectFindsTheFirstOfANameHoweverManyItHas) {
  std::mt19937 Random(1);
  const auto Name = [&Random] { return std::string(Random() % 2 ? 1 : 16, static_cast<char>('a' + Random() % 20)); };
  for (int Round = 0; Round < 1000; ++Round) {
    // Few names with repetitions; now and then about as many as an index is made for, all different.
    std::vector<std::string> Names(Round % 50 ? Random() % 30 : TJSONNames::MaxIndexed - 1 + Random() % 3);
    for (std::size_t At = 0; At < Names.size(); ++At) Names[At] = Names.size() < 30 ? Name() : std::to_string(At);
    TJSONObject Appended;
    TJSONTreeBuilder Tree;
    EXPECT_TRUE(Tree.BeginArray());
    for (int Twice = 0; Twice < 2; ++Twice) {  // the second one shares the names of the first one
      EXPECT_TRUE(Tree.BeginObject());
      for (std::size_t At = 0; At < Names.size(); ++At)
        EXPECT_TRUE(Tree.Name(Names[At]) && Tree.Number(std::to_string(At)));
      EXPECT_TRUE(Tree.EndObject());
    }
    EXPECT_TRUE(Tree.EndArray());
    for (std::size_t At = 0; At < Names.size(); ++At)
      Appended.Append(Names[At], TJSONValue(TJSONNumber{std::to_string(At)}));
    const auto Root = Tree.Take();
    for (std::size_t Asked = 0; Asked < Names.size() + 40; ++Asked) {
      const std::string Wanted = Asked < Names.size() ? Names[Asked] : Name();
      const auto First = std::ranges::find(Names, Wanted);
      for (const TJSONObject* Object : {Root->AsArray()->At(0)->AsObject(), Root->AsArray()->At(1)->AsObject(),
                                        static_cast<const TJSONObject*>(&Appended)}) {
        ASSERT_EQ(Object->Count(), Names.size());
        const TJSONValue* const Found = Object->Find(Wanted);
        ASSERT_EQ(Found ? Found->AsNumber()->Text : "none",
                  First == Names.end() ? "none" : std::to_string(First - Names.begin()));
      }
    }
  }
}

TEST(JsonMemberFinder, AnswersAsTheObjectDoesWhateverItRemembers) {
  constexpr TJSONKey Keys[] = {"a", "b", "c", "d", "a name that is long", "another name that is long"};
  std::mt19937 Random(1);
  for (int Round = 0; Round < 200; ++Round) {
    TJSONTreeBuilder Tree;
    EXPECT_TRUE(Tree.BeginArray());
    for (int Count = 0; Count < 60; ++Count) {  // of more kinds than are remembered
      EXPECT_TRUE(Tree.BeginObject());
      for (const TJSONKey& Key : Keys) {
        const bool IsThere = Random() % 4 != 0;
        EXPECT_TRUE(!IsThere || (Tree.Name(Key.Text()) && Tree.Number(std::to_string(Count))));
      }
      EXPECT_TRUE(Tree.EndObject());
    }
    EXPECT_TRUE(Tree.EndArray());
    const auto Root = Tree.Take();
    TJSONPlaces Places;
    for (const TJSONValue& Element : Root->AsArray()->Elements()) {
      TJSONMemberFinder Finder(Element.AsObject(), &Places), Other(Element.AsObject(), &Places);
      std::string Name;  // its memory is used again, for other names
      for (std::size_t Asked = 0; Asked < 120; ++Asked) {
        const TJSONKey& Key = Keys[Random() % 8 ? Asked % 6 : Random() % 6];  // mostly in the same order
        ASSERT_EQ(Finder.Find(Key), Element.AsObject()->Find(Key));
        Name = Keys[Random() % 6].Text();
        ASSERT_EQ((Random() % 2 ? Finder : Other).Find(Name), Element.AsObject()->Find(Name));
      }
    }
  }
  TJSONPlaces Places;
  EXPECT_FALSE(TJSONMemberFinder(nullptr, &Places).Find("a"));
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
