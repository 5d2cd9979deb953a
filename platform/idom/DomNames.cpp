#include "platform/idom/DomNames.h"

#include <string_view>
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/util/XMLChar.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "platform/idom/DomBorder.h"

using xercesc::XMLUni;

namespace {

/// ASCII, and not the NUL that ends the other text.
bool isPlain(char byte) { return byte > 0; }

[[noreturn]] void refuseNamespace() {
  refuse(xercesc::DOMException::NAMESPACE_ERR, "the name cannot be in that namespace");
}

/// What holds for elements and attributes alike: a prefix stands for a namespace, and "xml" for its
/// own.
void checkPrefix(std::u16string_view prefix, std::u16string_view uri) {
  const bool isUnbound = !prefix.empty() && uri.empty();
  if (isUnbound || (prefix == XMLUni::fgXMLString && uri != XMLUni::fgXMLURIName)) {
    refuseNamespace();
  }
}

}  // namespace

bool equals(const XMLCh* text, const I18NString& expected) {
  const std::string_view bytes = expected.utf8();
  if (text == nullptr) return bytes.empty();
  std::size_t index = 0;
  while (index < bytes.size() && isPlain(bytes[index]) && text[index] == XMLCh(bytes[index])) {
    ++index;
  }
  if (index == bytes.size()) return text[index] == 0;
  return !isPlain(bytes[index]) && expected.equalsUtf16(text);
}

bool isNamed(const xercesc::DOMNode& node, const I18NString& namespaceUri,
             const I18NString& localName) {
  // A node that was made without regard to namespaces has no local name of its own.
  const XMLCh* name = node.getLocalName();
  const bool isSame =
      name != nullptr ? equals(name, localName) : localName.equalsUtf16(localNameOf(node));
  return isSame && equals(node.getNamespaceURI(), namespaceUri);
}

void checkQualifiedName(const std::u16string& name) {
  using Characters = xercesc::XMLChar1_0;
  if (!Characters::isValidName(name.data(), name.size())) {
    refuse(xercesc::DOMException::INVALID_CHARACTER_ERR, "the text is no name");
  }
  if (!Characters::isValidQName(name.data(), name.size())) {
    refuse(xercesc::DOMException::NAMESPACE_ERR, "a colon stands where none may be");
  }
}

// No element can be in a namespace that only one prefix may stand for, but under that prefix.
void checkElementName(const DomUri& namespaceUri, const std::u16string& qualifiedName) {
  checkQualifiedName(qualifiedName);
  const std::u16string_view prefix = prefixPartOf(qualifiedName);
  const std::u16string_view uri = viewOf(namespaceUri.get());
  checkPrefix(prefix, uri);
  const bool isXml = uri == XMLUni::fgXMLURIName && prefix != XMLUni::fgXMLString;
  if (isXml || prefix == XMLUni::fgXMLNSString || uri == XMLUni::fgXMLNSURIName) refuseNamespace();
}

void checkAttributeName(const DomUri& namespaceUri, const std::u16string& qualifiedName) {
  checkQualifiedName(qualifiedName);
  const std::u16string_view prefix = prefixPartOf(qualifiedName);
  const std::u16string_view uri = viewOf(namespaceUri.get());
  checkPrefix(prefix, uri);
  const bool declares = prefix == XMLUni::fgXMLNSString || qualifiedName == XMLUni::fgXMLNSString;
  const bool declaresItself = !prefix.empty() && localPartOf(qualifiedName) == u"xmlns";
  if (declares != (uri == XMLUni::fgXMLNSURIName) || (declares && declaresItself)) {
    refuseNamespace();
  }
}
