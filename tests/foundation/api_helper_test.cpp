#include "oxSuperAPI/foundation/uBeamAPIHelper.h"

#include <gtest/gtest.h>

#include <map>

#include "../support/documents.h"
#include "../support/test_host.h"

namespace oxSuperAPI {
namespace {

using THelper = TBeamAPIHelper;

TEST(ReadingJson, PathsLeadThroughObjectsAndArraysToTexts) {
  const TJSONValue Json = Document(R"({"a":{"b":{"c":"deep"}},"list":["x",{"y":[["p","q"]]}],"a.b":"dotted",
    "null":null,"twice":"first","twice":"second","number":1.50,"big":12345678901234567890,"exponent":1E5,"yes":true,
    "no":false,"empty":{},"Case":"upper","rate.":"full stop"})");
  const std::pair<const char*, std::vector<const char*>> Cases[] = {
      {"deep", {"a.b.c"}},
      {"x", {"list[0]"}},
      {"q", {"list[1].y[0][1]"}},
      {"first", {"twice"}},
      {"1.50", {"number"}},
      {"12345678901234567890", {"big"}},
      {"1E5", {"exponent"}},
      {"true", {"yes"}},
      {"false", {"no"}},
      {"upper", {"Case"}},
      {"", {"null", "empty", "list", "a.b"}},  // there, but without a text
      {"", {"case", "a.x", "a[0]", "list[2]", "list.x", "twice.x", "number[0]", "rate", "rate."}},
      {"",
       {"", ".", "a..b", "a.", ".a", "[x]", "list[-1]", "list[+0]", "list[ 0]", "list[]", "list[", "list[0", "list[0]x",
        "list.[0]", "list[99999999999999999999]", "list[18446744073709551616]"}}};
  for (const auto& [Text, Paths] : Cases) {
    for (const char* Path : Paths) {
      EXPECT_EQ(THelper::SafeJsonValue(Json, Path), Text) << Path;
      EXPECT_EQ(THelper::ValueAsString(Json, "", Path), Text) << Path;
    }
  }
  EXPECT_EQ(THelper::ValueAsString(Json, "list[1]", "y[0][0]"), "p");
  EXPECT_EQ(THelper::ValueAsString(Json, "list", "[0]"), "x");
  EXPECT_EQ(THelper::ValueAsString(Json, "missing", "Case") + THelper::ValueAsString(nullptr, "", "Case"), "");
  EXPECT_EQ(THelper::SafeJsonValue(Document(R"([{"x":1}])"), "[0].x"), "1");
}

TEST(ReadingJson, NumbersAndFlagsAreReadEachByTheirOwnRule) {
  const TJSONValue Json =
      Document(R"({"seven":"7","eight":8,"float":"12.5","whole":5.0,"exponent":1e3,"huge":2147483648,
    "padded":" 7","blank":"  ","word":"abc","yes":true,"text":"true","null":null,"amount":" 1.5 ","x.y":9,
    "bad":" 1,5","none":"nan","o":{"amount":"x"}})");
  const std::map<std::string_view, std::int32_t> Integers = {
      {"seven", 7},  {"eight", 8}, {"float", 0}, {"whole", 0}, {"exponent", 0}, {"huge", 0},
      {"padded", 0}, {"blank", 0}, {"word", 0},  {"yes", 0},   {"null", 0},     {"missing", 0}};
  for (const auto& [Name, Value] : Integers) {
    EXPECT_EQ(THelper::ValueAsInteger(Json, "", Name), Value) << Name;
    EXPECT_EQ(THelper::SafeJsonInteger(Json, Name), Value) << Name;
  }
  EXPECT_EQ(THelper::SafeJsonInteger(Json, "x.y"), 9) << "a name, not a path";
  EXPECT_EQ(THelper::ValueAsInteger(Json, "", "x.y"), 0);
  EXPECT_EQ(THelper::SafeJsonInteger(nullptr, "seven"), 0);

  EXPECT_EQ(THelper::ValueAsDouble(Json, "", "amount"), 1.5);
  EXPECT_EQ(THelper::ValueAsStrictDouble(Json, "", "amount"), 1.5);
  EXPECT_EQ(THelper::ValueAsDouble(Json, "", "exponent"), 1000);
  for (const char* Name : {"blank", "null", "missing"}) {
    EXPECT_EQ(THelper::ValueAsDouble(Json, "", Name), 0) << Name;
    EXPECT_THROW(THelper::ValueAsStrictDouble(Json, "", Name), TBeamConversionError) << Name;
  }
  const std::tuple<const char*, const char*, const char*> Refused[] = {
      {"", "word", "abc"}, {"", "bad", " 1,5"}, {"", "none", "nan"}, {"o", "amount", "x"}};
  for (const auto& [Path, Name, Value] : Refused) {
    const auto Read = [&] { THelper::ValueAsDouble(Json, Path, Name); };
    EXPECT_THROW(Read(), TBeamConversionError);
    EXPECT_EQ(ErrorOf(Read), std::string(Name) + " value >" + Value + "< is not a floating point number");
  }
  EXPECT_TRUE(THelper::ValueAsBool(Json, "", "yes"));
  for (const char* Name : {"text", "eight", "null", "missing", "o"}) EXPECT_FALSE(THelper::ValueAsBool(Json, "", Name));
}

TEST(ReadingJson, ContainersAreTakenByNameAndRefusedWhenOfAnotherKind) {
  const TJSONValue Json = Document(R"({"o":{"x":1},"a":[1],"null":null,"text":"x","p":{"q":{}}})");
  const TJSONObject* Object = Json.AsObject();
  const TJSONArray* Array = nullptr;
  for (const char* Name : {"missing", "null", "p.q"}) {
    EXPECT_FALSE(THelper::SafeJsonObject(Json, Name, Object)) << Name;
    EXPECT_FALSE(THelper::SafeJsonArray(Json, Name, Array)) << Name;
  }
  EXPECT_EQ(Object, Json.AsObject()) << "left as it was";
  for (const char* Name : {"a", "text"}) EXPECT_THROW(THelper::SafeJsonObject(Json, Name, Object), TBeamTypeError);
  EXPECT_THROW(THelper::SafeJsonArray(Json, "o", Array), TBeamTypeError);
  ASSERT_TRUE(THelper::SafeJsonObject(Json, "o", Object));
  EXPECT_EQ(Object, Json.AsObject()->Find("o")->AsObject());
  ASSERT_TRUE(THelper::SafeJsonArray(Json, "a", Array));
  EXPECT_EQ(Array->Count(), 1u);
}

TEST(ReadingJson, FindByNameTakesTheFirstInDocumentOrderWithoutRegardToCase) {
  const TJSONValue Json = Document(R"({"a":[{"b":[{"Target ":"in a"}]}]," STATUS ":{"status":"inner"},"target":"later",
                                       "nothing":null})");
  EXPECT_EQ(*THelper::FindByName(Json, "target")->AsString(), "in a");
  EXPECT_TRUE(THelper::FindByName(Json, "status")->AsObject()) << "a member's own name comes before what is in it";
  ASSERT_NE(THelper::FindByName(Json, "Nothing"), nullptr);
  EXPECT_TRUE(THelper::FindByName(Json, "Nothing")->IsNull());
  EXPECT_EQ(THelper::FindByName(Json, " target"), nullptr) << "the sought name is taken as it is";
  EXPECT_EQ(THelper::FindByName(nullptr, "target"), nullptr);
  EXPECT_EQ(THelper::FindByName(Document("\"target\""), "target"), nullptr);

  TJSONValue Deep(std::string("found"));
  for (std::size_t Level = 0; Level < 100'000; ++Level) {
    TJSONObject Object;
    Object.Append(Level == 0 ? "deep" : "x", std::move(Deep));
    Deep = TJSONValue(std::move(Object));
  }
  EXPECT_EQ(THelper::FindByName(Deep, "deep"), nullptr) << "and the stack holds";
}

TEST(JsonDates, AreReadFromFixedPositions) {
  for (const char* Text :
       {"2024-02-03", "2024/02/03T10:00:00Z", "2024\xE2\x80\x93\x30\x32\xE2\x80\x93\x30\x33", "2024x02y03z"})
    EXPECT_EQ(THelper::GetJsonDate(Text), 45325) << Text;
  for (const char* Text : {"", "20240203", "2024-02", "abcd-02-03", "2024-02-0x"})
    EXPECT_EQ(THelper::GetJsonDate(Text), 0) << Text;
  for (const char* Text : {"2024-02-30", "2024-13-01", "0000-01-01", "2023-02-29"})
    EXPECT_THROW(THelper::GetJsonDate(Text), TBeamConversionError) << Text;
  for (const auto& [Date, Text] :
       {std::pair{0.0, ""}, {0.5, "1899-12-30"}, {-1.25, "1899-12-29"}, {45356.9, "2024-03-05"}})
    EXPECT_EQ(THelper::FormatJsonDate(Date), Text);
}

TEST(JsonTexts, PrettyFormatChangesObjectsOnly) {
  TFakeHost Host;
  EXPECT_EQ(THelper::PrettyFormatJson(R"({"a":1.50,"b":[]})"), "{\n  \"a\": 1.50,\n  \"b\": []\n}");
  for (const char* Text : {"[1]", "5", "", "no JSON", "{\"a\":1"}) EXPECT_EQ(THelper::PrettyFormatJson(Text), Text);
}

TEST(JsonTexts, CleanUpUnwrapsAQuotedObjectByItsTextAlone) {
  const std::map<std::string, std::string> Cases = {
      {R"("{\"a\":\"b\"}")", R"({"a":"b"})"},
      {R"("{}")", "{}"},
      {R"("{"a":"{x}","b":1}")", R"({"a":"{x},"b":1}")"},  // the first of the closing pairs, not the last
      {R"("{"a":"x\\\"y"}")", R"({"a":"x\\"y"})"},
      {R"("{"a":1)", R"("{"a":1)"},
      {R"({"a":"b"})", R"({"a":"b"})"},
      {R"( "{}")", R"( "{}")"},
      {"\"", "\""},
      {"", ""}};
  for (const auto& [Text, Clean] : Cases) EXPECT_EQ(THelper::CleanUp(Text), Clean);
}

// An XML node with its children and attributes in it.
struct TTestNode : TXMLNode {
  std::string Content;
  std::map<std::string, TTestNode, std::less<>> Children, Attributes;

  static const TXMLNode* In(const std::map<std::string, TTestNode, std::less<>>& Nodes, std::string_view Name) {
    const auto Found = Nodes.find(Name);
    return Found == Nodes.end() ? nullptr : &Found->second;
  }
  const TXMLNode* Child(std::string_view Name) const override { return In(Children, Name); }
  const TXMLNode* Attribute(std::string_view Name) const override { return In(Attributes, Name); }
  std::string Text() const override { return Content; }
};

TEST(Xml, PathsEndAtTheTextOrAnAttributeOfTheirLastNode) {
  TTestNode Root;
  Root.Content = " root ";
  Root.Attributes["id"].Content = "\t7 ";
  Root.Children["a"].Content = "a";
  Root.Children["a"].Children["b"].Content = "\n b \n";
  Root.Children["a"].Children["b"].Attributes["kind"].Content = "k";
  Root.Children["a"].Children[""].Content = "a text node, which some documents know by no name";
  Root.Attributes[""].Content = "no attribute";
  const std::tuple<const char*, TxmlValueType, const char*> Cases[] = {
      {"", xmlvtValue, "root"},      {"a;b", xmlvtValue, "b"},     {"a;x", xmlvtValue, ""},
      {"x;b", xmlvtValue, ""},       {"a;", xmlvtValue, ""},       {";", xmlvtValue, ""},
      {"", xmlvtAttribute, ""},      {"id", xmlvtAttribute, "7"},  {"a;b;kind", xmlvtAttribute, "k"},
      {"a;b;x", xmlvtAttribute, ""}, {"a;b;", xmlvtAttribute, ""}, {"a;x;kind", xmlvtAttribute, ""},
      {"id", xmlvtValue, ""},        {"a", xmlvtAttribute, ""}};
  for (const auto& [Path, Type, Expected] : Cases) {
    std::string Value = "old";
    THelper::GetNodeValue(&Root, Path, Type, Value);
    EXPECT_EQ(Value, Expected) << Path;
  }
  std::string Value = "a;b";
  THelper::GetNodeValue(&Root, Value, xmlvtValue, Value);
  EXPECT_EQ(Value, "b") << "a path that is the result as well";
  THelper::GetNodeValue(nullptr, "a", xmlvtValue, Value);
  EXPECT_EQ(Value, "");
}

TEST(Registration, KeyAndPinComeFromTheHostAndAreClearedFirst) {
  TFakeHost Host;
  Host.FakeIdentity.Key = "K", Host.FakeIdentity.PIN = "1";
  std::string Key = "old", PIN = "old";
  THelper::GetRegoKeyAndPIN(Key, PIN);
  EXPECT_EQ(Key + PIN, "K1");
  RegisterHost(nullptr);
  EXPECT_THROW(THelper::GetRegoKeyAndPIN(Key, PIN), TBeamError);
  EXPECT_EQ(Key + PIN, "");
}

TEST(ObjectStringList, OwnsWhatIsAttached) {
  struct TCounted {
    int& Freed;
    ~TCounted() { ++Freed; }
  };
  int Freed = 0;
  {
    TObjectStringList List;
    for (const char* Text : {"a", "b", "c"}) List.AddObject(Text, std::unique_ptr<TCounted>(new TCounted{Freed}));
    List.Add("d");
    EXPECT_TRUE(List.ObjectAt<TCounted>(1) && !List.ObjectAt<TCounted>(3));
    List.Delete(1);
    EXPECT_EQ(std::to_string(Freed) + List[1], "1c");
    EXPECT_THROW(List.Delete(3), TBeamRangeError);
    EXPECT_THROW(List[3], TBeamRangeError);
    List.Clear();
    EXPECT_EQ(std::pair(Freed, List.Count()), std::pair(3, std::size_t{0}));
    List.AddObject("e", std::unique_ptr<TCounted>(new TCounted{Freed}));
  }
  EXPECT_EQ(Freed, 4);
}

}  // namespace
}  // namespace oxSuperAPI
