#include "tools/Secrets.h"

#include "foundation/ConfigurationVocabulary.h"
#include "foundation/ElementWalk.h"
#include "foundation/VRDIDOMUtils.h"

namespace {

/// Whether @p test holds for any element below @p root.
template <class Test>
bool anyBelow(VRDIDOM_Element& root, Test test) {
  bool found = false;
  walkElements(root, [&](VRDIDOM_Element& element) {
    found = found || test(element);
    return !found;
  });
  return found;
}

/// @return whether it was one
bool maskIfSecret(VRDIDOM_Element& element) {
  if (!isSecret(element)) return false;
  VRDIDOMUtils::setText(element, secretMask);
  return true;
}

}  // namespace

I18NString typeOf(VRDIDOM_Element& element) {
  return element.getAttributeNS(vocabulary().schemaInstanceUri, vocabulary().type);
}

bool isEncrypted(VRDIDOM_Element& element) { return saysTrue(element, vocabulary().encrypted); }

bool isSecret(VRDIDOM_Element& element) {
  return isEncrypted(element) || typeOf(element) == vocabulary().systemPassword;
}

bool holdsEncrypted(VRDIDOM_Element element) {
  return isEncrypted(element) || anyBelow(element, isEncrypted);
}

bool holdsUndecrypted(VRDIDOM_Element element) {
  return anyBelow(element, [](VRDIDOM_Element& candidate) {
    return isEncrypted(candidate) && typeOf(candidate) != vocabulary().systemPassword;
  });
}

// Masked, not dropped: that there is a value, and what kind of it, is no secret.
bool maskSecrets(VRDIDOM_Element element) {
  if (maskIfSecret(element)) return true;
  bool anyMasked = false;
  walkElements(element, [&](VRDIDOM_Element& below) {
    const bool isMasked = maskIfSecret(below);
    anyMasked = anyMasked || isMasked;
    return !isMasked;
  });
  return anyMasked;
}
