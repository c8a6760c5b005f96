#pragma once

#include <string>
#include <string_view>

#include "oxSuperAPI/host/uBeamError.h"

namespace oxSuperAPI {

/// An element or an attribute of an XML document. Owned by its document, as is every node that it hands out.
class OXSUPERAPI_EXPORT TXMLNode {
 public:
  virtual ~TXMLNode() = default;
  /// The first child element of exactly this name, or null.
  virtual const TXMLNode* Child(std::string_view Name) const = 0;
  /// The attribute of exactly this name, or null.
  virtual const TXMLNode* Attribute(std::string_view Name) const = 0;
  /// All text directly inside the element, joined in order, or the attribute's value. UTF-8, not trimmed.
  virtual std::string Text() const = 0;
};

}  // namespace oxSuperAPI
