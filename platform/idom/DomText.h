#pragma once

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMCharacterData.hpp>
#include <xercesc/dom/DOMNode.hpp>

#include <string>
#include <string_view>

#include "platform/core/I18NString.h"

// Texts on their way into the tree and out of it. A view lasts until the node changes.

/// Null acts as empty, as nearly everywhere in the DOM.
inline std::u16string_view viewOf(const XMLCh* text) {
  return text == nullptr ? std::u16string_view() : std::u16string_view(text);
}

inline bool isElement(const xercesc::DOMNode& node) {
  return node.getNodeType() == xercesc::DOMNode::ELEMENT_NODE;
}

inline bool isText(const xercesc::DOMNode& node) {
  return node.getNodeType() == xercesc::DOMNode::TEXT_NODE ||
         node.getNodeType() == xercesc::DOMNode::CDATA_SECTION_NODE;
}

/// The character data of a node that `isText`.
inline std::u16string_view textOf(const xercesc::DOMNode& node) {
  const auto& data = static_cast<const xercesc::DOMCharacterData&>(node);
  const XMLCh* text = data.getData();
  return text == nullptr ? std::u16string_view() : std::u16string_view(text, data.getLength());
}

/// The value of an attribute: its text itself where that lies in one node, as it nearly always
/// does, else put together in @p joined. The DOM's own way allocates in the document, even to read.
std::u16string_view valueOf(const xercesc::DOMNode& attribute, std::u16string& joined);

/// What `getNodeValue` shows of text nodes and attributes; empty for any other node.
std::u16string_view characterDataOf(const xercesc::DOMNode& node, std::u16string& joined);

/// Replaces what `characterDataOf` gives, in the same node, so that only a value longer than any
/// before it costs the document memory. Does nothing to any other node.
void setCharacterData(xercesc::DOMNode& node, const std::u16string& value);

/// The part behind the colon, or all.
std::u16string_view localPartOf(std::u16string_view qualifiedName);
/// The part before the colon, or nothing.
std::u16string_view prefixPartOf(std::u16string_view qualifiedName);

/// The local name, also of nodes that were made without regard to namespaces.
std::u16string_view localNameOf(const xercesc::DOMNode& node);

/// @name Towards Xerces-C, whose texts end at their first NUL
/// @{
/// A NUL, which XML cannot hold, becomes U+FFFD and does not cut the text.
std::u16string toDomValue(const I18NString& value);
/// Throws `VRDIDOM_Exception` for a name with a NUL.
std::u16string toDomName(const I18NString& name);
/// The same for a namespace, which is null when it is empty.
class DomUri {
 public:
  explicit DomUri(const I18NString& uri) : m_uri(toDomName(uri)) {}
  const XMLCh* get() const { return m_uri.empty() ? nullptr : m_uri.c_str(); }

 private:
  std::u16string m_uri;
};
/// @}
