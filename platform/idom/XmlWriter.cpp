#include "platform/idom/XmlWriter.h"

#include <xercesc/dom/DOMNamedNodeMap.hpp>

#include <algorithm>
#include <utility>

#include "platform/idom/DomText.h"

using xercesc::DOMElement;
using xercesc::DOMNamedNodeMap;
using xercesc::DOMNode;
using Binding = NamespaceScope::Binding;

namespace {

constexpr std::u16string_view xmlPrefix = u"xml";
constexpr std::u16string_view xmlnsPrefix = u"xmlns";

constexpr std::u16string_view xmlUri = u"http://www.w3.org/XML/1998/namespace";
constexpr std::u16string_view xmlnsUri = u"http://www.w3.org/2000/xmlns/";

/// No prefix may be declared for these two.
bool isReserved(std::u16string_view uri) { return uri == xmlUri || uri == xmlnsUri; }

/// A document keeps each namespace once, so most comparisons end here.
bool areSame(std::u16string_view left, std::u16string_view right) {
  return (left.data() == right.data() && left.size() == right.size()) || left == right;
}

bool isAllowed(const Binding& declaration) {
  if (declaration.prefix == xmlPrefix) return declaration.uri == xmlUri;
  const bool undeclares = declaration.uri.empty() && !declaration.prefix.empty();
  return declaration.prefix != xmlnsPrefix && !isReserved(declaration.uri) && !undeclares;
}

/// What the element itself says of its prefix. A prefix without a namespace says nothing.
Binding bindingOf(const DOMElement& element) {
  const std::u16string_view prefix = prefixPartOf(viewOf(element.getNodeName()));
  const std::u16string_view uri = viewOf(element.getNamespaceURI());
  return {prefix, isReserved(uri) && prefix != xmlPrefix ? std::u16string_view() : uri};
}

bool saysNothing(const Binding& ofElement) {
  return ofElement.uri.empty() && !ofElement.prefix.empty();
}

}  // namespace

// The walk. No recursion: a tree may be as deep as it likes.

void XmlWriter::write(const DOMNode& root) {
  begin(root);
  while (!m_open.empty()) {
    const DOMNode* child = m_open.back().nextChild;
    if (child == nullptr) {
      end();
    } else {
      m_open.back().nextChild = child->getNextSibling();
      begin(*child);
    }
  }
  m_sink.flush();
}

void XmlWriter::begin(const DOMNode& node) {
  switch (node.getNodeType()) {
    case DOMNode::ELEMENT_NODE:
      return beginElement(static_cast<const DOMElement&>(node));
    case DOMNode::TEXT_NODE:
    case DOMNode::CDATA_SECTION_NODE:
      return m_sink.characterData(textOf(node));
    case DOMNode::ATTRIBUTE_NODE:
      return m_sink.attributeValue(valueOf(node));
    case DOMNode::DOCUMENT_NODE:
      m_open.push_back({&node, node.getFirstChild(), m_scope.open()});
      return;
    default:
      // Neither the parser nor the handles make any other node.
      return;
  }
}

void XmlWriter::beginElement(const DOMElement& element) {
  const std::size_t outerScope = m_scope.open();
  collectAttributes(element);
  resolveNamespaces(element);
  writeStartTag(element);
  const DOMNode* child = element.getFirstChild();
  m_sink.markup(child == nullptr ? "/>" : ">");
  if (child == nullptr) {
    m_scope.close(outerScope);
  } else {
    m_open.push_back({&element, child, outerScope});
  }
}

void XmlWriter::end() {
  const OpenElement& closed = m_open.back();
  if (isElement(*closed.node)) {
    m_sink.markup("</");
    m_sink.name(viewOf(closed.node->getNodeName()));
    m_sink.markup(">");
  }
  m_scope.close(closed.outerScope);
  m_open.pop_back();
}

// What is to be written

void XmlWriter::collectAttributes(const DOMElement& element) {
  m_attributes.clear();
  m_added.clear();
  const DOMNamedNodeMap& attributes = *element.getAttributes();
  const XMLSize_t count = attributes.getLength();
  for (XMLSize_t i = 0; i < count; ++i) {
    const DOMNode& node = *attributes.item(i);
    const std::u16string_view name = viewOf(node.getNodeName());
    const std::u16string_view prefix = prefixPartOf(name);
    const bool isDeclaration = prefix == xmlnsPrefix || name == xmlnsPrefix;
    m_attributes.push_back(
        {&node, prefix, localPartOf(name), viewOf(node.getNamespaceURI()), isDeclaration});
  }
}

void XmlWriter::resolveNamespaces(const DOMElement& element) {
  const Binding ofElement = bindingOf(element);
  for (Attribute& attribute : m_attributes) {  // 1.
    if (attribute.isDeclaration) declare(attribute, ofElement);
  }
  use(ofElement.prefix,  // 2.
      saysNothing(ofElement) ? meaningOf(ofElement.prefix) : ofElement.uri);
  for (Attribute& attribute : m_attributes) {  // 3.
    if (!attribute.isDeclaration) resolve(attribute);
  }
  dropDoubles();
}

void XmlWriter::declare(Attribute& declaration, const Binding& ofElement) {
  const bool isDefault = declaration.prefix.empty();
  const Binding binding{isDefault ? std::u16string_view() : declaration.local,
                        valueOf(*declaration.node)};
  const bool contradicts =
      binding.prefix == ofElement.prefix && binding.uri != ofElement.uri && !saysNothing(ofElement);
  declaration.isWritten =
      isAllowed(binding) && !contradicts && !m_scope.isHere(m_scope.find(binding.prefix));
  if (declaration.isWritten) m_scope.bind(binding.prefix, binding.uri);
}

void XmlWriter::resolve(Attribute& attribute) {
  if (attribute.prefix.empty() && attribute.uri.empty()) return;
  if (attribute.uri == xmlUri) {
    attribute.prefix = xmlPrefix;
  } else if (attribute.uri.empty()) {
    resolvePlain(attribute);
  } else if (attribute.prefix.empty() || !use(attribute.prefix, attribute.uri)) {
    attribute.prefix = prefixFor(attribute.uri);
  }
}

void XmlWriter::resolvePlain(Attribute& attribute) {
  if (attribute.prefix == xmlPrefix) return;
  attribute.isPlain = true;
  attribute.uri = meaningOf(attribute.prefix);
  use(attribute.prefix, attribute.uri);
}

// Two attributes may differ in prefix and yet have one name, as soon as prefixes mean something.
void XmlWriter::dropDoubles() {
  for (Attribute& plain : m_attributes) {
    if (!plain.isPlain) continue;
    plain.isWritten =
        std::none_of(m_attributes.begin(), m_attributes.end(), [&plain](const Attribute& other) {
          return &other != &plain && !other.isDeclaration && other.isWritten &&
                 other.local == plain.local && other.uri == plain.uri;
        });
  }
}

/// Sees to it that @p prefix means @p uri on this element, and keeps it so: what comes later may
/// not change it. False if it means something else already.
bool XmlWriter::use(std::u16string_view prefix, std::u16string_view uri) {
  const Binding* present = m_scope.find(prefix);
  const bool isNothing = present == nullptr && prefix.empty() && uri.empty();
  const bool fits = isNothing || (present != nullptr && areSame(present->uri, uri));
  if (m_scope.isHere(present)) return fits;
  m_scope.bind(prefix, uri);
  if (!fits && prefix != xmlPrefix) m_added.push_back({prefix, uri});
  return true;
}

std::u16string_view XmlWriter::prefixFor(std::u16string_view uri) {
  std::u16string_view prefix = m_scope.prefixOf(uri);
  for (std::size_t number = 1; prefix.empty(); ++number) {
    const std::string digits = std::to_string(number);
    std::u16string candidate = u"ns" + std::u16string(digits.begin(), digits.end());
    if (m_scope.find(candidate) == nullptr) prefix = keep(std::move(candidate));
  }
  use(prefix, uri);
  return prefix;
}

std::u16string_view XmlWriter::meaningOf(std::u16string_view prefix) {
  const Binding* present = m_scope.find(prefix);
  return present != nullptr ? present->uri : keep(u"urn:prefix:" + std::u16string(prefix));
}

std::u16string_view XmlWriter::keep(std::u16string text) {
  m_texts.push_back(std::move(text));
  return m_texts.back();
}

std::u16string_view XmlWriter::valueOf(const DOMNode& attribute) {
  std::u16string joined;
  const std::u16string_view value = ::valueOf(attribute, joined);
  return value.data() == joined.data() ? keep(std::move(joined)) : value;
}

// Writing it

void XmlWriter::writeStartTag(const DOMElement& element) {
  m_sink.markup("<");
  m_sink.name(viewOf(element.getNodeName()));
  for (const Attribute& attribute : m_attributes) {
    if (attribute.isWritten) writeAttribute(attribute);
  }
  for (const Binding& added : m_added) writeDeclaration(added);
}

void XmlWriter::writeAttribute(const Attribute& attribute) {
  m_sink.markup(" ");
  if (!attribute.prefix.empty()) {
    m_sink.name(attribute.prefix);
    m_sink.markup(":");
  }
  m_sink.name(attribute.local);
  m_sink.markup("=\"");
  m_sink.attributeValue(valueOf(*attribute.node));
  m_sink.markup("\"");
}

void XmlWriter::writeDeclaration(const Binding& binding) {
  m_sink.markup(binding.prefix.empty() ? " xmlns" : " xmlns:");
  m_sink.name(binding.prefix);
  m_sink.markup("=\"");
  m_sink.attributeValue(binding.uri);
  m_sink.markup("\"");
}
