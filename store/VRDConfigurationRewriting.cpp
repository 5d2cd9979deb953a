// Unit VRDConfiguration: changes of a tree in place. Nothing here needs a store.

#include <cstdlib>

#include "foundation/ConfigurationVocabulary.h"
#include "foundation/ElementWalk.h"
#include "foundation/VRDIDOMUtils.h"
#include "platform/core/VRDFmDir.h"
#include "platform/idom/VRDIDOM_NodeList.h"
#include "store/PathRewriting.h"
#include "store/VRDConfiguration.h"

namespace {

constexpr wchar_t percent = L'%';

bool isPathValue(VRDIDOM_Element& value) {
  const I18NString type = value.getAttributeNS(vocabulary().schemaInstanceUri, vocabulary().type);
  return type == vocabulary().folderPath || type == vocabulary().filePath;
}

/// Calls @p visit for each path value below @p root until it says true.
/// @return whether it did
template <class Visit>
bool anyPathValue(VRDIDOM_Element& root, Visit visit) {
  VRDIDOM_NodeList values = root.getElementsByTagNameNS(vocabulary().configUri, vocabulary().value);
  const unsigned long count = values.getLength();
  for (unsigned long index = 0; index < count; ++index) {
    VRDIDOM_Element value = values.item(index);
    if (isPathValue(value) && visit(value)) return true;
  }
  return false;
}

/// Gives the text of every path value below @p root to @p rewrite, and writes it back where that
/// says so.
template <class Rewrite>
void rewritePaths(VRDIDOM_Element& root, Rewrite rewrite) {
  anyPathValue(root, [&rewrite](VRDIDOM_Element& value) {
    const I18NString text = VRDIDOMUtils::getText(value);
    I18NString path = text;
    if (text.empty() || !rewrite(path)) return false;
    // Most paths are as they should be from the second time on. Where something stands beside the
    // text, writing removes it.
    if (path != text || !VRDIDOMUtils::isTextOnly(value)) VRDIDOMUtils::setText(value, path);
    return false;
  });
}

bool replaceReferences(I18NString& path) {
  if (path.find(percent, 0) < 0) return false;
  path = VRDConfiguration::replaceEnvVariables(path);
  return true;
}

bool makeAbsolute(I18NString& path) {
  if (path.empty() || path.find(percent, 0) >= 0) return false;
  VRDFmDir::resolveEffectivePath(path);
  return true;
}

/// How far behind the start of a replaced reference the search goes on.
constexpr int distanceAfterReplacement = 5;

/// Bounds on the replacing in one text: a variable may lead back to itself.
constexpr int maximumReplacements = 1000;
constexpr std::size_t maximumBytes = std::size_t{1} << 20;

bool canBeDisabled(VRDIDOM_Element& element) {
  for (const I18NString* name : {&vocabulary().parameter, &vocabulary().instances,
                                 &vocabulary().instance, &vocabulary().value}) {
    if (VRDIDOMUtils::isQNameEquals(element, vocabulary().configUri, *name)) return true;
  }
  return false;
}

/// Removes @p element from its parent if it is disabled.
/// @return whether it was
bool removeIfDisabled(VRDIDOM_Element& element) {
  if (!saysTrue(element, vocabulary().disabled)) return false;
  element.getParentNode().removeChild(element);
  return true;
}

}  // namespace

void VRDConfiguration::replaceVariables(VRDIDOM_Element& root) {
  rewritePaths(root, replaceReferences);
}

void VRDConfiguration::fixupPaths(VRDIDOM_Element& root) { rewritePaths(root, makeAbsolute); }

bool holdsPathValue(VRDIDOM_Element& root) {
  return anyPathValue(root, [](VRDIDOM_Element&) { return true; });
}

void rewritePathValues(VRDIDOM_Element& root) {
  rewritePaths(root, [](I18NString& path) {
    const bool isReplaced = replaceReferences(path);
    return makeAbsolute(path) || isReplaced;
  });
}

I18NString VRDConfiguration::replaceEnvVariables(I18NString text) {
  I18NString given = text;
  int replacements = 0;
  int next = 0;
  while (true) {
    const int open = text.find(percent, next);
    const int close = open < 0 ? -1 : text.find(percent, open + 1);
    if (close < 0) return text;
    const I18NString name = text.substr(open + 1, close - open - 1);
    const char* value = name.empty() ? nullptr : std::getenv(name.c_str());
    if (value == nullptr) {
      // The closing sign of an empty name may open the next reference.
      next = name.empty() ? close : close + 1;
      continue;
    }
    text.replace(open, close - open + 1, value);
    if (++replacements > maximumReplacements || text.utf8().size() > maximumBytes) return given;
    next = open + distanceAfterReplacement;
  }
}

void VRDConfiguration::removeDisabledElements(VRDIDOM_Element& element, unsigned long& index) {
  if (element.isNull()) return;
  if (removeIfDisabled(element)) {
    --index;
    return;
  }
  walkElements(element, [](VRDIDOM_Element& child) {
    return canBeDisabled(child) && !removeIfDisabled(child);
  });
}
