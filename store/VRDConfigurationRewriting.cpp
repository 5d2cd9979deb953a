// Unit VRDConfiguration: changes of a tree in place. Nothing here needs a store.

#include <cstdlib>

#include "foundation/ConfigurationVocabulary.h"
#include "foundation/VRDIDOMUtils.h"
#include "platform/core/VRDFmDir.h"
#include "platform/idom/VRDIDOM_NodeList.h"
#include "store/VRDConfiguration.h"

namespace {

/// The words of the documents that are met here, made once and never destroyed.
struct Words {
  const I18NString configUri = ConfigNamespaceUri;
  const I18NString instanceUri = XmlSchemaInstanceNamespaceUri;
  const I18NString type = "type";
  const I18NString value = "value";
  const I18NString disabled = "disabled";
  const I18NString prunedElements[4] = {"parameter", "instances", "instance", "value"};
};

const Words& words() {
  static const Words& immortal = *new Words;
  return immortal;
}

constexpr wchar_t percent = L'%';

bool isPathValue(VRDIDOM_Element& value) {
  const I18NString type = value.getAttributeNS(words().instanceUri, words().type);
  return type == "cfg:folderPath" || type == "cfg:filePath";
}

/// Gives the text of every path value below @p root to @p rewrite, and writes it back where that
/// says so.
template <class Rewrite>
void rewritePaths(VRDIDOM_Element& root, Rewrite rewrite) {
  VRDIDOM_NodeList values = root.getElementsByTagNameNS(words().configUri, words().value);
  const unsigned long count = values.getLength();
  for (unsigned long index = 0; index < count; ++index) {
    VRDIDOM_Element value = values.item(index);
    if (!isPathValue(value)) continue;
    I18NString text = VRDIDOMUtils::getText(value);
    if (!text.empty() && rewrite(text)) VRDIDOMUtils::setText(value, text);
  }
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

bool canBeDisabled(VRDIDOM_Node& node) {
  if (node.getNodeType() != VRDIDOMUtils::elementNode) return false;
  for (const I18NString& name : words().prunedElements) {
    if (VRDIDOMUtils::isQNameEquals(node, words().configUri, name)) return true;
  }
  return false;
}

}  // namespace

void VRDConfiguration::replaceVariables(VRDIDOM_Element& root) {
  rewritePaths(root, replaceReferences);
}

void VRDConfiguration::fixupPaths(VRDIDOM_Element& root) { rewritePaths(root, makeAbsolute); }

/// Both, in this order for each value, in one walk: a tree may hold many thousands of values.
void VRDConfiguration::rewrite(VRDIDOM_Element& root) {
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
  if (saysTrue(element, words().disabled)) {
    element.getParentNode().removeChild(element);
    --index;
    return;
  }
  VRDIDOM_Node next = element.getFirstChild();
  while (!next.isNull()) {
    VRDIDOM_Element child = next;
    next = next.getNextSibling();
    unsigned long unused = 0;
    if (canBeDisabled(child)) removeDisabledElements(child, unused);
  }
}
