#include "tools/Secrets.h"

#include <strings.h>

#include "foundation/ConfigurationVocabulary.h"
#include "platform/core/I18NString.h"
#include "platform/idom/VRDIDOM_Document.h"
#include "platform/idom/VRDIDOM_Node.h"

namespace {

constexpr char systemPassword[] = "cfg:systemPassword";
constexpr short elementNode = 1;

/// Whether @p test holds for any element below @p parent.
template <class Test>
bool anyBelow(VRDIDOM_Element& parent, Test test) {
  for (VRDIDOM_Node child = parent.getFirstChild(); !child.isNull();
       child = child.getNextSibling()) {
    if (child.getNodeType() != elementNode) continue;
    VRDIDOM_Element element = child;
    if (test(element) || anyBelow(element, test)) return true;
  }
  return false;
}

}  // namespace

I18NString typeOf(VRDIDOM_Element& element) {
  return element.getAttributeNS(XmlSchemaInstanceNamespaceUri, "type");
}

bool isEncrypted(VRDIDOM_Element& element) {
  return strcasecmp(element.getAttribute("encrypted").c_str(), "true") == 0;
}

bool isSecret(VRDIDOM_Element& element) {
  return isEncrypted(element) || typeOf(element) == systemPassword;
}

bool holdsEncrypted(VRDIDOM_Element element) {
  return isEncrypted(element) || anyBelow(element, isEncrypted);
}

bool holdsUndecrypted(VRDIDOM_Element element) {
  return anyBelow(element, [](VRDIDOM_Element& candidate) {
    return isEncrypted(candidate) && typeOf(candidate) != systemPassword;
  });
}

// Masked, not dropped: that there is a value, and what kind of it, is no secret.
bool maskSecrets(VRDIDOM_Element element) {
  if (isSecret(element)) {
    setContent(element, secretMask);
    return true;
  }
  bool masked = false;
  for (VRDIDOM_Node child = element.getFirstChild(); !child.isNull();
       child = child.getNextSibling()) {
    if (child.getNodeType() == elementNode && maskSecrets(child)) masked = true;
  }
  return masked;
}

// The library's own helper for this is hidden in it.
void setContent(VRDIDOM_Element& element, const I18NString& text) {
  for (VRDIDOM_Node child = element.getFirstChild(); !child.isNull();
       child = element.getFirstChild()) {
    element.removeChild(child);
  }
  element.appendChild(element.getOwnerDocument().createTextNode(text));
}
