#pragma once

#include "platform/core/I18NString.h"
#include "platform/core/VRDExport.h"
#include "platform/idom/VRDIDOM_Attr.h"
#include "platform/idom/VRDIDOM_Node.h"

/// A handle on an element; see `VRDIDOM_Node` for what holds for every handle.
class VRD_EXPORT VRDIDOM_Element : public VRDIDOM_Node {
 public:
  VRDIDOM_Element() noexcept = default;
  VRDIDOM_Element(const VRDIDOM_Element& source) noexcept = default;
  VRDIDOM_Element(VRDIDOM_Element&& source) noexcept = default;
  VRDIDOM_Element(const VRDIDOM_Node& source) noexcept;
  ~VRDIDOM_Element() = default;
  VRDIDOM_Element& operator=(const VRDIDOM_Element& source) noexcept = default;
  VRDIDOM_Element& operator=(VRDIDOM_Element&& source) noexcept = default;
  VRDIDOM_Element& operator=(const VRDIDOM_Node& source) noexcept;
  /// Designates what @p source designates; a null pointer makes the handle null.
  VRDIDOM_Element& operator=(const VRDIDOM_Node* source) noexcept;

  /// The value of the attribute of that qualified name; an empty text if it is absent.
  I18NString getAttribute(const I18NString& name);
  /// Puts the same into @p out.
  void getAttribute(const I18NString& name, I18NString& out);
  /// 1 or 0.
  int hasAttribute(const I18NString& name);
  /// The attribute itself; null if it is absent.
  VRDIDOM_Attr getAttributeNode(const I18NString& name);
  /// Sets the attribute of that qualified name, which may hold a colon; one that is there, set in
  /// whatever way, is changed and not doubled. It is a plain attribute: no namespace is looked up.
  /// Only those that have theirs by definition (`xmlns`, `xmlns:...`, `xml:...`) are in it.
  void setAttribute(const I18NString& name, const I18NString& value);
  /// Removes the attribute of that qualified name, if it is there.
  void removeAttribute(const I18NString& name);

  /// Removes all of them.
  void removeAttributes();

  /// An attribute by its namespace and local name: its value, or an empty text; whether it is
  /// there. An empty @p namespaceUri means none. An attribute that was set by its qualified name
  /// alone has no local name and is not found.
  I18NString getAttributeNS(const I18NString& namespaceUri, const I18NString& localName);
  int hasAttributeNS(const I18NString& namespaceUri, const I18NString& localName);
  /// Sets the attribute, under the prefix of @p qualifiedName. Its place is that of the attribute
  /// of that namespace and local name, and of a plain one of that qualified name. A name that no
  /// attribute can have in that namespace is refused.
  void setAttributeNS(const I18NString& namespaceUri, const I18NString& qualifiedName,
                      const I18NString& value);

  /// The elements below this one, in document order, as they are now: later changes of the tree do
  /// not change the list.
  VRDIDOM_NodeList getElementsByTagName(const I18NString& qualifiedName);
  VRDIDOM_NodeList getElementsByTagNameNS(const I18NString& namespaceUri,
                                          const I18NString& localName);

 protected:
  friend class DomAccess;
  using VRDIDOM_Node::VRDIDOM_Node;
};
