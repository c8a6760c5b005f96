#pragma once

#include <memory>
#include <string_view>

#include "oxSuperAPI/host/uHostXml.h"

namespace oxSuperAPI {

/// An XML document on pugixml. Only the five predefined entities and character references are resolved; a document
/// type is read over. Serves one thread at a time, readers included.
class OXSUPERAPI_EXPORT TXMLDocument {
 public:
  /// Reads `Text`, UTF-8 unless it begins with another byte order mark or declares another encoding. Raises TBeamError
  /// with the byte position when it is not one well-formed element.
  explicit TXMLDocument(std::string_view Text);
  /// Moving keeps every node where it is. @{
  ~TXMLDocument();
  TXMLDocument(TXMLDocument&&) noexcept;
  TXMLDocument& operator=(TXMLDocument&&) noexcept;
  /// @}

  /// The outermost element. This node, and every node reached from it, stays valid as long as the document.
  const TXMLNode& Root() const;

 private:
  class TContent;
  std::unique_ptr<TContent> FContent;
};

}  // namespace oxSuperAPI
