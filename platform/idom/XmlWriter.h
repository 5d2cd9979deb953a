#pragma once

#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNode.hpp>

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "platform/idom/NamespaceScope.h"
#include "platform/idom/Utf8Sink.h"

/// Writes one tree as XML in UTF-8, as `VRDIDOM_Helper::write` promises it. The tree may say of its
/// prefixes too little, too much or things that contradict each other, as the DOM lets it. For each
/// element, in this order:
///
/// 1. Its own declarations hold as they stand, but not those that XML forbids, and not one that
///    gives the element's own prefix another meaning.
/// 2. If its prefix then still does not mean its namespace, a declaration is added.
/// 3. The same for each attribute, or, where the prefix has a meaning on this element already,
///    another prefix is taken. A prefix that was set without a namespace and means nothing here
///    gets one made of the prefix, since a text with an unknown prefix could not be read.
class XmlWriter {
 public:
  explicit XmlWriter(std::string& out) : m_sink(out) {}

  void write(const xercesc::DOMNode& root);

 private:
  struct Attribute {
    const xercesc::DOMNode* node;
    std::u16string_view prefix;
    std::u16string_view local;
    std::u16string_view uri;
    bool isDeclaration;
    bool isPlain = false;  // has a prefix, and the namespace that the prefix means here
    bool isWritten = true;
  };
  struct OpenElement {
    const xercesc::DOMNode* node;
    const xercesc::DOMNode* nextChild;
    std::size_t outerScope;
  };

  void begin(const xercesc::DOMNode& node);
  void end();
  void beginElement(const xercesc::DOMElement& element);

  void collectAttributes(const xercesc::DOMElement& element);
  void resolveNamespaces(const xercesc::DOMElement& element);
  void declare(Attribute& declaration, const NamespaceScope::Binding& ofElement);
  void resolve(Attribute& attribute);
  void resolvePlain(Attribute& attribute);
  void dropDoubles();
  bool use(std::u16string_view prefix, std::u16string_view uri);
  std::u16string_view prefixFor(std::u16string_view uri);
  std::u16string_view meaningOf(std::u16string_view prefix);
  std::u16string_view keep(std::u16string text);

  void writeStartTag(const xercesc::DOMElement& element);
  void writeAttribute(const Attribute& attribute);
  void writeDeclaration(const NamespaceScope::Binding& binding);
  std::u16string_view valueOf(const xercesc::DOMNode& attribute);

  Utf8Sink m_sink;
  NamespaceScope m_scope;
  std::vector<OpenElement> m_open;
  std::vector<Attribute> m_attributes;           // of the element that begins
  std::vector<NamespaceScope::Binding> m_added;  // declarations to be added to it
  std::deque<std::u16string> m_texts;            // what views point to that is not in the tree
};
