#pragma once

#include <string>
#include <string_view>

#include "foundation/ConfigurationVocabulary.h"
#include "tools/LocatedDocument.h"

// What the library looks at in a startup document.

inline bool isStartupRoot(const LocatedElement& element) {
  return element.isNamed(ConfigNamespaceUri, "parameters");
}

inline bool isParameter(const LocatedElement& element) {
  return element.isNamed(ConfigNamespaceUri, "parameter");
}

inline bool isValue(const LocatedElement& element) {
  return element.isNamed(ConfigNamespaceUri, "value");
}

inline bool isPathValue(const LocatedElement& element) {
  const std::string type = element.type();
  return isValue(element) && (type == FolderPathType || type == FilePathType);
}

/// Whether "disabled" has an effect on the element, if such elements lead to it.
inline bool isPrunable(const LocatedElement& element) {
  return isParameter(element) || isValue(element) ||
         element.isNamed(ConfigNamespaceUri, "instances") ||
         element.isNamed(ConfigNamespaceUri, "instance");
}

inline bool isDisabled(const LocatedElement& element) {
  return isPrunable(element) && element.says("disabled");
}

/// The value that counts, or null: what is disabled is gone before the library looks.
inline const LocatedElement* valueOf(const LocatedElement& parameter) {
  for (const LocatedElement& child : parameter.children) {
    if (isValue(child) && !isDisabled(child)) return &child;
  }
  return nullptr;
}

inline std::string nameOf(const LocatedElement& parameter) {
  const std::string* name = parameter.attribute("name");
  return name == nullptr ? "" : *name;
}

/// Calls @p visit with the element and every one below it that is not disabled.
template <class Visit>
void forEachElement(const LocatedElement& element, Visit visit) {
  visit(element);
  for (const LocatedElement& child : element.children) {
    // Only through such elements does the library find what is disabled.
    if (isPrunable(element) && isDisabled(child)) continue;
    forEachElement(child, visit);
  }
}
