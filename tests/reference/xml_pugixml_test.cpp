#include "oxSuperAPI/reference/xml_pugixml.h"

#include "temporary_directory.h"

namespace oxSuperAPI::tests {
namespace {

TEST(XMLDocument, FindsChildrenAttributesAndAllTextOfAnElement) {
  const TXMLDocument Document(
      R"(<?xml version="1.0"?><!-- x --><r a="1" A=" 2 "><b>first</b><b c="&quot;&#233;"/><B/></r>)");
  const TXMLNode& Root = Document.Root();
  EXPECT_EQ(Root.Child("b")->Text() + Root.Attribute("a")->Text() + Root.Attribute("A")->Text(), "first1 2 ");
  EXPECT_NE(Root.Child("B"), Root.Child("b"));
  EXPECT_FALSE(Root.Child("c") || Root.Child("") || Root.Attribute("b") || Root.Attribute("a")->Child("a") ||
               Root.Attribute("a")->Attribute("a"));
  const std::pair<std::string, std::string> Cases[] = {
      {"<a/>", ""},
      {"<a> x<!-- y --> <b>no</b><![CDATA[<&]]> z\n</a>", " x <& z\n"},
      {"<a>&lt;&#x41;&amp;&unknown;</a>", "<A&&unknown;"},
      {"<!DOCTYPE a [<!ENTITY e \"expanded\"><!ENTITY f SYSTEM \"file:///etc/passwd\">]><a>&e;&f;</a>", "&e;&f;"},
      {"\xEF\xBB\xBF<a>Zo\xC3\xAB</a>", "Zo\xC3\xAB"},
      {"<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a>Zo\xEB</a>", "Zo\xC3\xAB"},
  };
  for (const auto& [XML, Text] : Cases) EXPECT_EQ(TXMLDocument(XML).Root().Text(), Text) << XML;
}

TEST(XMLDocument, KeepsHandedOutNodesAsLongAsItself) {
  std::string XML = "<r>";
  for (int Index = 0; Index < 1000; ++Index) XML += "<n" + std::to_string(Index) + " a=''/>";
  TXMLDocument First(XML + "</r>");
  const TXMLNode* const Root = &First.Root();
  const TXMLNode* const Node = Root->Child("n0");
  for (int Index = 0; Index < 1000; ++Index) ASSERT_TRUE(Root->Child("n" + std::to_string(Index))->Attribute("a"));
  const TXMLDocument Moved = std::move(First);
  EXPECT_EQ(&Moved.Root(), Root);
  EXPECT_EQ(Root->Child("n0"), Node);
  EXPECT_EQ(Node->Text(), "");
}

TEST(XMLDocument, TakesAnyDepth) {
  std::string XML;
  for (int Level = 0; Level < 200'000; ++Level) XML += "<a>";
  EXPECT_THROW(TXMLDocument{XML}, TBeamError);
  for (int Level = 0; Level < 200'000; ++Level) XML += "</a>";
  EXPECT_NE(TXMLDocument(XML).Root().Child("a"), nullptr);
}

TEST(XMLDocument, RefusesWhatIsNotOneElementAndSaysWhere) {
  for (const std::string& Text :
       {std::string("<a>\0</a>", 8), std::string(" "), std::string("text"), std::string("<a>"), std::string("<a></b>"),
        std::string("<a b></a>"), std::string("<a/><b/>"), std::string("<a/>x"), std::string("x<a/>"),
        std::string("<a><!--"), std::string("<!DOCTYPE"), std::string("<a b=\"1></a>"), std::string("<a/>&#65;")})
    EXPECT_ERROR(TXMLDocument{Text}, " at byte ") << Text;
}

}  // namespace
}  // namespace oxSuperAPI::tests
