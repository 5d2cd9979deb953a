#include "platform/idom/DomAttributes.h"

#include <xercesc/dom/DOMException.hpp>
#include <xercesc/dom/DOMNamedNodeMap.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "platform/idom/DomBorder.h"
#include "platform/idom/DomNames.h"
#include "platform/idom/DomText.h"

using xercesc::DOMAttr;
using xercesc::DOMElement;
using xercesc::DOMNamedNodeMap;
using xercesc::DOMNode;
using xercesc::XMLUni;

namespace {

template <class Matches>
DOMAttr* findIn(const DOMElement* element, Matches matches) {
  if (element == nullptr) return nullptr;
  const DOMNamedNodeMap& attributes = *element->getAttributes();
  const XMLSize_t count = attributes.getLength();
  for (XMLSize_t i = 0; i < count; ++i) {
    DOMNode* attribute = attributes.item(i);
    if (matches(*attribute)) return static_cast<DOMAttr*>(attribute);
  }
  return nullptr;
}

/// Adds an attribute that was named without a namespace. Those whose namespace lies in the name
/// alone get it, so that they equal parsed ones.
void addPlain(DOMElement& element, const std::u16string& name, const std::u16string& value) {
  checkQualifiedName(name);
  if (name == u"xmlns:xmlns") {
    refuse(xercesc::DOMException::NAMESPACE_ERR, "xmlns cannot be declared");
  }
  const std::u16string_view prefix = prefixPartOf(name);
  if (name == u"xmlns" || prefix == u"xmlns") {
    element.setAttributeNS(XMLUni::fgXMLNSURIName, name.c_str(), value.c_str());
  } else if (prefix == u"xml") {
    element.setAttributeNS(XMLUni::fgXMLURIName, name.c_str(), value.c_str());
  } else if (prefix.empty()) {
    element.setAttributeNS(nullptr, name.c_str(), value.c_str());
  } else {
    element.setAttribute(name.c_str(), value.c_str());
  }
}

/// A plain attribute would stand in the text beside a namespaced one of its qualified name. It goes
/// before that comes: Xerces-C takes it out by its name alone, and would take whichever it finds.
void removePlain(DOMElement& element, DOMAttr* namesake) {
  if (namesake != nullptr && viewOf(namesake->getNamespaceURI()).empty()) {
    element.removeAttributeNode(namesake);
  }
}

// The attributes are kept sorted by qualified name, and Xerces-C searches for them by that order.
// So it is out of the map while its name changes.
void changePrefix(DOMElement& element, DOMAttr& attribute, const std::u16string& qualifiedName) {
  const std::u16string prefix(prefixPartOf(qualifiedName));
  element.removeAttributeNode(&attribute);
  attribute.setPrefix(prefix.empty() ? nullptr : prefix.c_str());
  element.setAttributeNodeNS(&attribute);
}

}  // namespace

DOMAttr* findAttribute(const DOMElement* element, const I18NString& name) {
  return findIn(element, [&name](const DOMNode& attribute) { return isNamed(attribute, name); });
}

DOMAttr* findAttribute(const DOMElement* element, const I18NString& namespaceUri,
                       const I18NString& localName) {
  return findIn(element, [&](const DOMNode& attribute) {
    // One that was set by its qualified name alone has no local name, and so is none of these.
    const XMLCh* local = attribute.getLocalName();
    return local != nullptr && equals(local, localName) &&
           equals(attribute.getNamespaceURI(), namespaceUri);
  });
}

void setPlainAttribute(DOMElement& element, const I18NString& name, const I18NString& value) {
  const std::u16string text = toDomValue(value);
  if (DOMAttr* present = findAttribute(&element, name)) return setCharacterData(*present, text);
  addPlain(element, toDomName(name), text);
}

void setNamespacedAttribute(DOMElement& element, const I18NString& namespaceUri,
                            const I18NString& qualifiedName, const I18NString& value) {
  const std::u16string name = toDomName(qualifiedName);
  const std::u16string text = toDomValue(value);
  const DomUri uri(namespaceUri);
  checkAttributeName(uri, name);
  const I18NString localName = I18NString::fromUtf16(localPartOf(name));
  DOMAttr* present = findAttribute(&element, namespaceUri, localName);
  if (present != nullptr && viewOf(present->getNodeName()) == name) {
    return setCharacterData(*present, text);
  }
  removePlain(element, findAttribute(&element, qualifiedName));
  if (present != nullptr) {
    changePrefix(element, *present, name);
    setCharacterData(*present, text);
  } else {
    element.setAttributeNS(uri.get(), name.c_str(), text.c_str());
  }
}
