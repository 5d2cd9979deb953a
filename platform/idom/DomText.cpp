#include "platform/idom/DomText.h"

#include <algorithm>

#include "platform/idom/DomBorder.h"

using xercesc::DOMNode;

namespace {

std::u16string_view join(const DOMNode* first, std::u16string& joined) {
  joined.clear();
  for (const DOMNode* child = first; child != nullptr; child = child->getNextSibling()) {
    if (isText(*child)) joined += textOf(*child);
  }
  return joined;
}

bool isOnlyText(const DOMNode& child) { return isText(child) && child.getNextSibling() == nullptr; }

}  // namespace

std::u16string_view valueOf(const DOMNode& attribute, std::u16string& joined) {
  const DOMNode* first = attribute.getFirstChild();
  if (first == nullptr) return {};
  return isOnlyText(*first) ? textOf(*first) : join(first, joined);
}

std::u16string_view characterDataOf(const DOMNode& node, std::u16string& joined) {
  if (node.getNodeType() == DOMNode::ATTRIBUTE_NODE) return valueOf(node, joined);
  return isText(node) ? textOf(node) : std::u16string_view();
}

void setCharacterData(DOMNode& node, const std::u16string& value) {
  if (isText(node)) return node.setNodeValue(value.c_str());
  if (node.getNodeType() != DOMNode::ATTRIBUTE_NODE) return;
  DOMNode* first = node.getFirstChild();
  const bool inPlace = first != nullptr && isOnlyText(*first);
  (inPlace ? *first : node).setNodeValue(value.c_str());
}

std::u16string_view localPartOf(std::u16string_view qualifiedName) {
  const std::size_t colon = qualifiedName.find(u':');
  return colon == std::u16string_view::npos ? qualifiedName : qualifiedName.substr(colon + 1);
}

std::u16string_view prefixPartOf(std::u16string_view qualifiedName) {
  const std::size_t colon = qualifiedName.find(u':');
  return colon == std::u16string_view::npos ? std::u16string_view()
                                            : qualifiedName.substr(0, colon);
}

std::u16string_view localNameOf(const DOMNode& node) {
  if (const XMLCh* name = node.getLocalName()) return name;
  const bool isNamed = isElement(node) || node.getNodeType() == DOMNode::ATTRIBUTE_NODE;
  return isNamed ? localPartOf(viewOf(node.getNodeName())) : std::u16string_view();
}

std::u16string toDomValue(const I18NString& value) {
  std::u16string result = value.toUtf16();
  std::replace(result.begin(), result.end(), u'\0', u'\uFFFD');
  return result;
}

std::u16string toDomName(const I18NString& name) {
  std::u16string result = name.toUtf16();
  if (result.find(u'\0') != std::u16string::npos) {
    refuse(xercesc::DOMException::INVALID_CHARACTER_ERR, "a name holds a NUL");
  }
  return result;
}
