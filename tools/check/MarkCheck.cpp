#include "tools/StartupVocabulary.h"
#include "tools/Text.h"
#include "tools/check/Checks.h"

namespace {

bool isTruthWord(const std::string& word) {
  return saysTrue(textOf(word)) || saysFalse(textOf(word));
}

void checkWord(const LocatedElement& element, const char* mark, FindingList& findings) {
  const std::string* word = element.attribute(mark);
  if (word == nullptr || isTruthWord(*word)) return;
  findings.add("odd-mark", element,
               std::string(mark) + '=' + inQuotes(*word) +
                   " is neither \"true\" nor \"false\", so "
                   "it has no effect",
               "write \"true\" or \"false\"");
}

void checkPlace(bool effective, const LocatedElement& element, const char* mark,
                const char* rightPlace, FindingList& findings) {
  if (effective || !element.says(mark)) return;
  findings.add("misplaced-mark", element,
               std::string(mark) + "=\"true\" has no effect on element " +
                   inQuotes(element.qualifiedName) + " in this place",
               std::string("put it on ") + rightPlace);
}

/// @param reached whether only elements on which "disabled" counts lead to this one
void checkDisabled(const LocatedElement& element, bool reached, FindingList& findings) {
  checkWord(element, "disabled", findings);
  checkPlace(reached && isPrunable(element), element, "disabled",
             "the parameter, instances, instance or value around it", findings);
  if (reached && isDisabled(element)) return;
  for (const LocatedElement& child : element.children) {
    checkDisabled(child, reached && isPrunable(element), findings);
  }
}

}  // namespace

// A mark that has no effect is worse than none: its author counts on it.
void checkMarks(const LocatedElement& parameter, FindingList& findings) {
  checkWord(parameter, "opaque", findings);
  checkDisabled(parameter, true, findings);
  forEachElement(parameter, [&](const LocatedElement& element) {
    checkWord(element, "encrypted", findings);
    checkPlace(&element == &parameter, element, "opaque", "the parameter", findings);
    checkPlace(element.children.empty(), element, "encrypted",
               "an element that holds nothing but the protected text", findings);
  });
}
