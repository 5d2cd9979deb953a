#include "platform/idom/VRDIDOM_Helper.h"

#include <string.h>

#include <string>
#include <utility>

#include "platform/core/I18NEncode.h"
#include "platform/idom/DomAccess.h"
#include "platform/idom/DomBorder.h"
#include "platform/idom/DomCopy.h"
#include "platform/idom/DomNames.h"
#include "platform/idom/DomText.h"
#include "platform/idom/XmlWriter.h"

using xercesc::DOMNode;

namespace {

/// What a tree is written to. It may hold a secret, so it is wiped when it goes.
class TreeText {
 public:
  explicit TreeText(const VRDIDOM_Node& handle) : TreeText() {
    if (const DOMNode* node = DomAccess::node(handle)) XmlWriter(m_text).write(*node);
  }
  ~TreeText() { ::explicit_bzero(m_text.data(), m_text.size()); }
  TreeText(const TreeText&) = delete;
  TreeText& operator=(const TreeText&) = delete;

  const std::string& get() const { return m_text; }

 private:
  TreeText() = default;  // so that the text is wiped also if the writing fails

  std::string m_text;
};

/// The characters of names that not every encoding has, out of a text that `XmlWriter` made.
std::string beyondAsciiInNames(const std::string& xml) {
  std::string found;
  bool isInTag = false;
  bool isInValue = false;
  for (const char byte : xml) {
    if (!isInValue && (byte == '<' || byte == '>')) isInTag = byte == '<';
    if (isInTag && byte == '"') isInValue = !isInValue;
    if (isInTag && !isInValue && (byte & 0x80) != 0) found += byte;
  }
  return found;
}

/// A name cannot hold the reference that stands for a character which the encoding does not have.
std::string encode(const std::string& xml, const char* encoding) {
  const std::string names = I18NEncodeForXml(beyondAsciiInNames(xml), encoding);
  if (names.find(I18NEncodeForXml("&#x", encoding)) != std::string::npos) {
    refuse(xercesc::DOMException::INVALID_CHARACTER_ERR, "the encoding cannot hold a name");
  }
  return I18NEncodeForXml(xml, encoding);
}

/// Whether @p parent would take a copy of @p child at its end.
bool canTake(const DOMNode& parent, const DOMNode& child) {
  if (isElement(parent)) return isElement(child) || isText(child);
  const bool isDocument = parent.getNodeType() == DOMNode::DOCUMENT_NODE;
  return isDocument && isElement(child) && parent.getFirstChild() == nullptr;
}

template <class Matches>
VRDIDOM_Element firstChildElement(const VRDIDOM_Node& parent, Matches matches) {
  const DOMNode* node = DomAccess::node(parent);
  DOMNode* child = node == nullptr ? nullptr : node->getFirstChild();
  while (child != nullptr && !(isElement(*child) && matches(*child))) {
    child = child->getNextSibling();
  }
  return DomAccess::make<VRDIDOM_Element>(parent, child);
}

}  // namespace

void VRDIDOM_Helper::write(VRDIDOM_Node node, std::ostream& stream, const char* encoding) {
  const TreeText text(node);
  const std::string encoded = encoding == nullptr ? std::string() : encode(text.get(), encoding);
  const std::string& bytes = encoding == nullptr ? text.get() : encoded;
  stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

void VRDIDOM_Helper::write(VRDIDOM_Node node, I18NString& out) {
  const TreeText tree(node);
  I18NString text(tree.get());
  if (out.empty()) {
    out = std::move(text);
  } else {
    out += text;
  }
}

VRDIDOM_Node VRDIDOM_Helper::appendChild(VRDIDOM_Node parent, VRDIDOM_Node child) {
  const DOMNode& target = DomAccess::changeable(parent);
  const DOMNode& source = DomAccess::changeable(child);
  // Before the copy, which would stay behind in the document.
  if (!canTake(target, source)) {
    refuse(xercesc::DOMException::HIERARCHY_REQUEST_ERR, "the node cannot have such a child");
  }
  return atBorder([&] {
    DOMNode* copy = copyInto(*DomAccess::body(parent), source, true);
    return parent.appendChild(DomAccess::make<VRDIDOM_Node>(parent, copy));
  });
}

VRDIDOM_Element VRDIDOM_Helper::getChildElement(VRDIDOM_Node& parent, const I18NString& name) {
  return firstChildElement(parent, [&](const DOMNode& child) { return isNamed(child, name); });
}

VRDIDOM_Element VRDIDOM_Helper::getChildElement(VRDIDOM_Node& parent,
                                                const I18NString& namespaceUri,
                                                const I18NString& localName) {
  return firstChildElement(
      parent, [&](const DOMNode& child) { return isNamed(child, namespaceUri, localName); });
}

void VRDIDOM_Helper::getElementText(const VRDIDOM_Element& element, I18NString& out) {
  out = I18NString();
  const DOMNode* node = DomAccess::element(element);
  const DOMNode* child = node == nullptr ? nullptr : node->getFirstChild();
  for (; child != nullptr; child = child->getNextSibling()) {
    if (isText(*child)) out.appendUtf16(textOf(*child));
  }
}
