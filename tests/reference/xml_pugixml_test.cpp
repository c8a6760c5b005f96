#include "oxSuperAPI/reference/xml_pugixml.h"

#include <gtest/gtest.h>

namespace oxSuperAPI::tests {
namespace {

TEST(XMLDocument, FindsChildrenAndAttributesByExactName) {
  const TXMLDocument Document(
      R"(<?xml version="1.0"?><!-- x --><r a="1" A=" 2 "><b>first</b><b c="&quot;&#233;"/><B/></r>)");
  const TXMLNode& Root = Document.Root();
  EXPECT_EQ(Root.Child("b")->Text(), "first");
  EXPECT_EQ(Root.Child("c"), nullptr);
  EXPECT_EQ(Root.Child(""), nullptr);
  EXPECT_NE(Root.Child("B"), Root.Child("b"));
  EXPECT_EQ(Root.Attribute("a")->Text(), "1");
  EXPECT_EQ(Root.Attribute("A")->Text(), " 2 ");
  EXPECT_EQ(Root.Attribute("b"), nullptr);
  EXPECT_EQ(Root.Attribute("a")->Child("a"), nullptr);
  EXPECT_EQ(Root.Attribute("a")->Attribute("a"), nullptr);
}

TEST(XMLDocument, JoinsAllTextOfAnElement) {
  const struct {
    std::string XML, Text;
  } Cases[] = {
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
  for (int Index = 0; Index < 1000; ++Index)
    XML += "<n" + std::to_string(Index) + " a=''>x</n" + std::to_string(Index) + ">";
  TXMLDocument First(XML + "</r>");
  const TXMLNode* const Root = &First.Root();
  const TXMLNode* const Node = Root->Child("n0");
  for (int Index = 0; Index < 1000; ++Index)
    ASSERT_NE(Root->Child("n" + std::to_string(Index))->Attribute("a"), nullptr);
  const TXMLDocument Moved = std::move(First);
  EXPECT_EQ(&Moved.Root(), Root);
  EXPECT_EQ(Root->Child("n0"), Node);
  EXPECT_EQ(Node->Text(), "x");
}

TEST(XMLDocument, TakesAnyDepth) {
  std::string XML;
  for (int Level = 0; Level < 200'000; ++Level) XML += "<a>";
  EXPECT_THROW(TXMLDocument{XML}, TBeamError);
  for (int Level = 0; Level < 200'000; ++Level) XML += "</a>";
  EXPECT_NE(TXMLDocument(XML).Root().Child("a"), nullptr);
}

TEST(XMLDocument, RefusesWhatIsNotOneElementAndSaysWhere) {
  const std::string Texts[] = {"",
                               " ",
                               "text",
                               "<a>",
                               "<a></b>",
                               "<a b></a>",
                               "<a/><b/>",
                               "<a/>x",
                               "x<a/>",
                               "<a",
                               "<a><!--",
                               "<!DOCTYPE",
                               "{}",
                               std::string("<a>\0</a>", 8),
                               "<a b=\"1></a>",
                               "<a/>&#65;"};
  for (const std::string& Text : Texts) {
    try {
      const TXMLDocument Document(Text);
      ADD_FAILURE() << Text;
    } catch (const TBeamError& Error) {
      EXPECT_NE(std::string(Error.what()).find(" at byte "), std::string::npos) << Error.what();
    }
  }
}

}  // namespace
}  // namespace oxSuperAPI::tests
