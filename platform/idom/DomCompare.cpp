#include "platform/idom/DomCompare.h"

#include <xercesc/dom/DOMNamedNodeMap.hpp>

#include <string>
#include <vector>

#include "platform/idom/DomText.h"

using xercesc::DOMNamedNodeMap;
using xercesc::DOMNode;

namespace {

bool haveEqualNames(const DOMNode& left, const DOMNode& right) {
  return viewOf(left.getNodeName()) == viewOf(right.getNodeName()) &&
         viewOf(left.getNamespaceURI()) == viewOf(right.getNamespaceURI());
}

bool haveEqualValues(const DOMNode& left, const DOMNode& right) {
  const bool isAttribute = left.getNodeType() == DOMNode::ATTRIBUTE_NODE;
  if (!isAttribute) return viewOf(left.getNodeValue()) == viewOf(right.getNodeValue());
  std::u16string ours;
  std::u16string theirs;
  return valueOf(left, ours) == valueOf(right, theirs);
}

// Attribute maps are sorted by qualified name, so equal ones stand at equal places.
bool haveEqualAttributes(const DOMNode& left, const DOMNode& right) {
  const DOMNamedNodeMap* ours = left.getAttributes();
  const DOMNamedNodeMap* theirs = right.getAttributes();
  if (ours == nullptr || theirs == nullptr) return ours == theirs;
  if (ours->getLength() != theirs->getLength()) return false;
  for (XMLSize_t i = 0; i < ours->getLength(); ++i) {
    const DOMNode& our = *ours->item(i);
    const DOMNode& their = *theirs->item(i);
    if (!haveEqualNames(our, their) || !haveEqualValues(our, their)) return false;
  }
  return true;
}

bool areEqualByThemselves(const DOMNode& left, const DOMNode& right) {
  return left.getNodeType() == right.getNodeType() && haveEqualNames(left, right) &&
         haveEqualValues(left, right) && haveEqualAttributes(left, right);
}

/// A place in each of two trees, moved in step.
struct Places {
  const DOMNode* left;
  const DOMNode* right;
};

}  // namespace

bool areEqual(const DOMNode& left, const DOMNode& right) {
  if (!areEqualByThemselves(left, right)) return false;
  if (left.getNodeType() == DOMNode::ATTRIBUTE_NODE) return true;

  std::vector<Places> open{{left.getFirstChild(), right.getFirstChild()}};
  while (!open.empty()) {
    const Places at = open.back();
    if (at.left == nullptr || at.right == nullptr) {
      if (at.left != at.right) return false;
      open.pop_back();
      continue;
    }
    if (!areEqualByThemselves(*at.left, *at.right)) return false;
    open.back() = {at.left->getNextSibling(), at.right->getNextSibling()};
    open.push_back({at.left->getFirstChild(), at.right->getFirstChild()});
  }
  return true;
}
