#include <map>
#include <set>

#include "platform/core/Ascii.h"
#include "service/IVRDConfiguration.h"
#include "service/VRDConfigurationFactory.h"
#include "tools/NearNames.h"
#include "tools/Text.h"
#include "tools/check/Checks.h"
#include "tools/check/LocaleTables.h"

namespace {

std::vector<std::string> sectionNames() {
  std::vector<std::string> names;
  for (const LocaleTable& table : localeTables) names.emplace_back(table.source.section);
  return names;
}

/// "xx" or "xx-yy"; no other code is ever found in a list of locales.
bool isLocaleCode(const std::string& code) {
  const bool language = code.size() >= 2 && isAsciiLower(code[0]) && isAsciiLower(code[1]);
  return language && (code.size() == 2 || (code.size() == 5 && code[2] == '-' &&
                                           isAsciiLower(code[3]) && isAsciiLower(code[4])));
}

/// Asked of the service, which brings every locale to this form before it looks for a key.
bool isCanonical(const std::string& key) {
  return bytesOf(VRDConfigurationFactory::getInstance()->normalizeLocale(textOf(key))) == key;
}

void checkForm(const LocaleTable& table, const LocatedElement& entry, const std::string& code,
               FindingList& findings) {
  if (table.codes == TableCodes::Locales && !isLocaleCode(code)) {
    findings.add("odd-locale", entry,
                 inQuotes(code) + " is no locale code, so it never counts as supported",
                 "write two small letters, or two, \"-\" and two, as in \"fr-ca\"");
  } else if (table.codes == TableCodes::LocalePatterns && !isCanonical(code)) {
    findings.add("odd-locale", entry,
                 "no normalised locale is ever equal to the key " + inQuotes(code),
                 "write it in small letters with \"-\", at most five characters");
  }
}

/// Reports an attribute that is missing or empty. @return its value
std::string checkAttribute(const LocatedElement& entry, const char* name, FindingList& findings) {
  const std::string* value = entry.attribute(name);
  if (value == nullptr || value->empty()) {
    findings.add("no-attribute", entry,
                 "element " + inQuotes(entry.qualifiedName) + " has no \"" + name +
                     "\", which reads as an empty text",
                 std::string("give it an attribute \"") + name + '"');
  }
  return value == nullptr ? "" : *value;
}

using Seen = std::map<std::string, unsigned long>;  // with the line

void checkRepetition(const LocaleTable& table, const LocatedElement& entry, const std::string& code,
                     Seen& seen, FindingList& findings) {
  const auto [first, isNew] = seen.insert({code, entry.line});
  if (isNew) return;
  const std::string before = inQuotes(code) + " stands in line " + std::to_string(first->second);
  findings.add("duplicate-entry", entry,
               before + (table.isMap ? " already, and the first one counts"
                                     : " already; the list holds it twice"),
               "remove one of them");
}

void checkEntry(const LocaleTable& table, const LocatedElement& entry, Seen& seen,
                FindingList& findings) {
  const std::string code = checkAttribute(entry, table.isMap ? "key" : "id", findings);
  if (table.isMap) checkAttribute(entry, "value", findings);
  if (code.empty()) return;
  checkForm(table, entry, code, findings);
  checkRepetition(table, entry, code, seen, findings);
}

void checkSection(const LocaleTable& table, const LocatedElement& element, FindingList& findings) {
  Seen seen;
  for (const LocatedElement& entry : element.children) {
    if (entry.localName == table.source.entry) {
      checkEntry(table, entry, seen, findings);
    } else {
      findings.add("ignored-element", entry,
                   "element " + inQuotes(entry.qualifiedName) + " is ignored in " +
                       inQuotes(table.source.section),
                   std::string("write it \"") + table.source.entry + "\", or remove it");
    }
  }
}

void reportUnknown(const LocatedElement& element, FindingList& findings) {
  if (tableOfSection(element.localName) != nullptr) {
    findings.add("prefixed-section", element,
                 "section " + inQuotes(element.qualifiedName) + " has a prefix, so it is not found",
                 "write it " + inQuotes(element.localName) + ", without a prefix");
  } else {
    findings.add("unknown-section", element,
                 "section " + inQuotes(element.qualifiedName) + " is not known, so it is ignored." +
                     didYouMean(element.localName, sectionNames()),
                 "correct its name, or remove it");
  }
}

// A missing section is no finding: each is optional, and an empty table may be meant.
void checkSections(const LocatedElement& root, FindingList& findings) {
  Seen seen;
  for (const LocatedElement& element : root.children) {
    const LocaleTable* table = tableOfSection(element.qualifiedName);
    if (table == nullptr) {
      reportUnknown(element, findings);
      continue;
    }
    const auto [first, isNew] = seen.insert({table->source.section, element.line});
    if (isNew) {
      checkSection(*table, element, findings);
    } else {
      findings.add("duplicate-section", element,
                   "section " + inQuotes(table->source.section) + " stands in line " +
                       std::to_string(first->second) + " already, and only that one is read",
                   "put the entries of both into one");
    }
  }
}

}  // namespace

void checkLocaleDocument(const InstallationFile& file, FindingList& findings) {
  const std::optional<LocatedDocument> document = parseForCheck(file, findings);
  if (!document) return;
  const LocatedElement& root = document->root();
  if (root.localName == "localeConfiguration") return checkSections(root, findings);
  findings.add("wrong-root", root,
               "the root is " + inQuotes(root.qualifiedName) + ", so every table stays empty",
               "make it \"localeConfiguration\"");
}
