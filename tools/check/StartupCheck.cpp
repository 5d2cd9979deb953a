#include <map>

#include "tools/StartupVocabulary.h"
#include "tools/Text.h"
#include "tools/check/Checks.h"
#include "tools/check/LocaleTables.h"

namespace {

std::string place(const LocatedElement& element) { return "line " + std::to_string(element.line); }

std::string called(const LocatedElement& parameter) {
  return "parameter " + inQuotes(nameOf(parameter));
}

bool checkRoot(const LocatedElement& root, FindingList& findings) {
  if (isStartupRoot(root)) return true;
  findings.add("wrong-root", root,
               "the root is " + inQuotes(root.qualifiedName) + " in namespace " +
                   inQuotes(root.namespaceUri) + ", so nothing in the document counts",
               std::string("make it \"parameters\" in namespace ") + ConfigNamespaceUri);
  return false;
}

void checkName(const LocatedElement& parameter, FindingList& findings) {
  if (!nameOf(parameter).empty()) return;
  findings.add("no-name", parameter, "the parameter has no name, so nobody can ask for it",
               "give it an attribute \"name\", or remove it");
}

/// @return the value that counts, or null
const LocatedElement* checkValue(const LocatedElement& parameter, FindingList& findings) {
  const LocatedElement* value = valueOf(parameter);
  if (value == nullptr) {
    findings.add("no-value", parameter, called(parameter) + " has no value, so it is dropped",
                 "give it a \"value\" element in the same namespace, or disable it as a whole");
    return nullptr;
  }
  for (const LocatedElement& child : parameter.children) {
    if (!isValue(child) || &child == value || isDisabled(child)) continue;
    findings.add("second-value", child,
                 called(parameter) + " has a value in " + place(*value) + "; this one is not read",
                 "remove one of them");
  }
  return value;
}

void checkContent(const LocatedElement& parameter, const LocatedElement& value,
                  FindingList& findings) {
  // A list or map that replaces a table is read as XML whatever its mark says.
  if (const LocaleTable* table = tableOfParameter(nameOf(parameter))) {
    return checkTable(*table, value, findings);
  }
  if (parameter.says("opaque") || value.children.empty()) return;
  findings.add("hidden-xml", value.children.front(),
               called(parameter) + " holds elements and is not opaque, so its text leaves them out",
               "mark the parameter opaque=\"true\", or make its value plain text");
}

void checkParameter(const LocatedElement& parameter, FindingList& findings) {
  checkName(parameter, findings);
  checkMarks(parameter, findings);
  const LocatedElement* value = checkValue(parameter, findings);
  if (value == nullptr) return;
  checkContent(parameter, *value, findings);
  checkTypes(parameter, findings);
}

/// The later of two parameters with one name counts, so the finding stands at the earlier one.
void checkDuplicate(std::map<std::string, const LocatedElement*>& byName,
                    const LocatedElement& parameter, FindingList& findings) {
  const auto [entry, first] = byName.insert({nameOf(parameter), &parameter});
  if (first) return;
  const LocatedElement* earlier = std::exchange(entry->second, &parameter);
  findings.add("duplicate-name", *earlier,
               called(parameter) + " stands again in " + place(parameter) +
                   ", and the later one counts in a process; the startup object takes the first",
               "remove one of them");
}

void checkChildren(const LocatedElement& root, FindingList& findings) {
  std::map<std::string, const LocatedElement*> byName;
  for (const LocatedElement& child : root.children) {
    if (!isParameter(child)) {
      findings.add("ignored-element", child,
                   "element " + inQuotes(child.qualifiedName) +
                       " is not a parameter of the configuration namespace, so it is ignored",
                   "correct its name and namespace, or remove it");
    } else if (!isDisabled(child)) {
      checkParameter(child, findings);
      if (valueOf(child) != nullptr) checkDuplicate(byName, child, findings);
    }
  }
}

}  // namespace

// With another root nothing below it is read, so nothing below it is a finding.
void checkStartupDocument(const InstallationFile& file, FindingList& findings) {
  const std::optional<LocatedDocument> document = parseForCheck(file, findings);
  if (!document || !checkRoot(document->root(), findings)) return;
  checkChildren(document->root(), findings);
  checkProtectedValues(document->root(), findings);
}
