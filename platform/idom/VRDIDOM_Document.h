#pragma once

#include "platform/core/I18NString.h"
#include "platform/core/VRDExport.h"
#include "platform/idom/VRDIDOM_Element.h"
#include "platform/idom/VRDIDOM_Node.h"
#include "platform/idom/VRDIDOM_Text.h"
#include "platform/idom/VRDIDOM_TreeWalker.h"

/// A handle on a document; see `VRDIDOM_Node`.
class VRD_EXPORT VRDIDOM_Document : public VRDIDOM_Node {
 public:
  VRDIDOM_Document() noexcept = default;

  /// The root element; null if the document has none.
  VRDIDOM_Element getDocumentElement();
  /// A new element that is not in the tree yet. It keeps the prefix of @p qualifiedName. An empty
  /// @p namespaceUri means none. A name that no element can have in that namespace is refused.
  VRDIDOM_Element createElementNS(const I18NString& namespaceUri, const I18NString& qualifiedName);
  /// A new text node that is not in the tree yet.
  VRDIDOM_Text createTextNode(const I18NString& text);
  /// Gives an element of this document another name, in place: attributes and children stay, and
  /// all handles on it. Any other node is refused. Returns it.
  VRDIDOM_Node renameNode(VRDIDOM_Node node, const I18NString& namespaceUri,
                          const I18NString& qualifiedName);
  /// A copy of @p source, owned by this document and not in its tree yet; null for a null handle.
  /// The source and its document stay as they are.
  /// @param deep not 0: with everything below it; attributes come along in either case
  VRDIDOM_Node importNode(VRDIDOM_Node& source, int deep);
  /// Gives @p node, an element or a text that is in no tree, and everything below it back to the
  /// document, which makes its next nodes of them, so that a document in which trees are replaced
  /// does not grow. The caller vouches that no other handle and no list designates any of it.
  /// @p node becomes null; where it is refused, it stays. For want of memory less is given back,
  /// and nothing is thrown. A new text looks among the room of those given back for one long
  /// enough, so this is for trees of some thousand texts, not for whole documents of many more.
  void recycle(VRDIDOM_Node& node);
  /// A walk over the nodes below @p root, which stands on @p root at first.
  /// @param whatToShow node types to stop at, as the DOM's mask: 1 is elements, 4 is texts
  /// @param filter     null
  /// @param expandEntityReferences without effect: a parsed tree holds no such nodes
  VRDIDOM_TreeWalker createTreeWalker(VRDIDOM_Node root, unsigned long whatToShow,
                                      VRDIDOM_NodeFilter* filter, int expandEntityReferences);

 private:
  friend class DomAccess;
  using VRDIDOM_Node::VRDIDOM_Node;
};
