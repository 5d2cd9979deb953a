#include "tools/StartupVocabulary.h"
#include "tools/Text.h"
#include "tools/check/Checks.h"
#include "tools/check/LocaleTables.h"

namespace {

constexpr char itemName[] = "item";

void checkPair(const LocatedElement& item, FindingList& findings) {
  for (const char* name : {"key", "value"}) {
    if (item.child(name) != nullptr) continue;
    findings.add("incomplete-item", item,
                 std::string("the item has no element \"") + name + "\", so it is skipped",
                 "give it a \"key\" and a \"value\" element, both without a prefix");
  }
}

/// Elements are found by their name as it is written.
bool isPrefixedItem(const LocatedElement& element) {
  return element.localName == itemName && element.qualifiedName != itemName;
}

}  // namespace

// Items count at any depth, but only under the bare name.
void checkTable(const LocaleTable& table, const LocatedElement& value, FindingList& findings) {
  bool anyItem = false;
  forEachElement(value, [&](const LocatedElement& element) {
    if (isPrefixedItem(element)) {
      findings.add("prefixed-item", element,
                   "element " + inQuotes(element.qualifiedName) +
                       " has a prefix, so it is not found in the table",
                   "write it \"item\", without a prefix");
    }
    if (element.qualifiedName != itemName) return;
    anyItem = true;
    if (table.isMap) checkPair(element, findings);
  });
  if (anyItem) return;
  findings.add("empty-table", value,
               "parameter " + inQuotes(table.source.parameter) +
                   " holds no \"item\" element, so it replaces its table by an empty one",
               "give it items, or remove it so that the locale document counts");
}
