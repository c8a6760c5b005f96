#include "oxSuperAPI/reference/xml_pugixml.h"

#include <pugixml.hpp>
#include <string>
#include <unordered_map>
#include <utility>

namespace oxSuperAPI {

/// The parsed text and the nodes handed out so far, one for each element and attribute that was asked for.
class TXMLDocument::TContent {
 public:
  explicit TContent(std::string_view Text) {
    // With parse_fragment, what stands beside the outermost element comes to light as well.
    const auto Parsed = FDocument.load_buffer(Text.data(), Text.size(),
                                              pugi::parse_default | pugi::parse_ws_pcdata | pugi::parse_fragment);
    if (!Parsed) Refuse(Parsed.description(), Parsed.offset);
    for (const pugi::xml_node Node : FDocument) {
      const bool IsElement = Node.type() == pugi::node_element;
      const bool IsBlank = std::string_view(Node.value()).find_first_not_of(" \t\r\n") == std::string_view::npos;
      if (IsElement ? !FRoot.empty() : !IsBlank)
        Refuse("Something stands beside the outermost element", Node.offset_debug());
      if (IsElement) FRoot = Node;
    }
    if (FRoot.empty()) Refuse("No element", static_cast<std::ptrdiff_t>(Text.size()));
  }

  const TXMLNode& Root();

 private:
  class TElement;
  class TAttribute;

  /// The node for a handle of pugixml; null for the empty one.
  template <class Node, class Handle>
  const TXMLNode* Hand(Handle Source) {
    if (Source.empty()) return nullptr;
    std::unique_ptr<TXMLNode>& Slot = FNodes[Source.internal_object()];
    if (!Slot) Slot = std::make_unique<Node>(*this, Source);
    return Slot.get();
  }

  [[noreturn]] static void Refuse(const std::string& Reason, std::ptrdiff_t Position) {
    throw TBeamError("The text is not XML: " + Reason + " at byte " + std::to_string(Position));
  }

  pugi::xml_document FDocument;
  pugi::xml_node FRoot;
  std::unordered_map<const void*, std::unique_ptr<TXMLNode>> FNodes;
};

class TXMLDocument::TContent::TAttribute final : public TXMLNode {
 public:
  TAttribute(TContent&, pugi::xml_attribute Source) : FSource(Source) {}
  const TXMLNode* Child(std::string_view) const override { return nullptr; }
  const TXMLNode* Attribute(std::string_view) const override { return nullptr; }
  std::string Text() const override { return FSource.value(); }

 private:
  pugi::xml_attribute FSource;
};

class TXMLDocument::TContent::TElement final : public TXMLNode {
 public:
  TElement(TContent& Content, pugi::xml_node Source) : FContent(Content), FSource(Source) {}

  const TXMLNode* Child(std::string_view Name) const override {
    for (const pugi::xml_node Child : FSource)
      if (Child.type() == pugi::node_element && Child.name() == Name) return FContent.Hand<TElement>(Child);
    return nullptr;
  }

  const TXMLNode* Attribute(std::string_view Name) const override {
    for (const pugi::xml_attribute Attribute : FSource.attributes())
      if (Attribute.name() == Name) return FContent.Hand<TAttribute>(Attribute);
    return nullptr;
  }

  std::string Text() const override {
    std::string Result;
    for (const pugi::xml_node Child : FSource)
      if (Child.type() == pugi::node_pcdata || Child.type() == pugi::node_cdata) Result += Child.value();
    return Result;
  }

 private:
  TContent& FContent;
  pugi::xml_node FSource;
};

const TXMLNode& TXMLDocument::TContent::Root() {
  return *Hand<TElement>(FRoot);
}

TXMLDocument::TXMLDocument(std::string_view Text) : FContent(std::make_unique<TContent>(Text)) {}
TXMLDocument::~TXMLDocument() = default;
TXMLDocument::TXMLDocument(TXMLDocument&&) noexcept = default;
TXMLDocument& TXMLDocument::operator=(TXMLDocument&&) noexcept = default;

const TXMLNode& TXMLDocument::Root() const {
  return FContent->Root();
}

}  // namespace oxSuperAPI
