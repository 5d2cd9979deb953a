#include <algorithm>
#include <map>

#include "service/ComponentMarker.h"
#include "tools/NearNames.h"
#include "tools/Text.h"
#include "tools/check/Checks.h"

namespace {

using Seen = std::map<std::string_view, unsigned long>;  // with the line

struct Line {
  std::string_view text;
  unsigned long number;
};

bool hasOuterBlank(std::string_view text) {
  const auto isBlank = [](char character) { return character == ' ' || character == '\t'; };
  return !text.empty() && (isBlank(text.front()) || isBlank(text.back()));
}

bool endsInReturn(std::string_view text) { return !text.empty() && text.back() == '\r'; }

/// Whether the line holds something that is nearly the marker: it was meant to count.
bool isNearlyAnEntry(std::string_view line) {
  constexpr int nearDistance = 2;
  const std::size_t end = line.find('=') + 1;
  return end >= componentMarker.size() &&
         editDistance(line.substr(end - componentMarker.size(), componentMarker.size()),
                      componentMarker) <= nearDistance;
}

void checkOther(const Line& line, FindingList& findings) {
  if (!isNearlyAnEntry(line.text)) return;
  findings.add("ignored-line", line.number, 1,
               "the line is nearly an entry, but it does not hold \"_version=\", so it is ignored",
               "write it NAME_version=VERSION");
}

void checkParts(const Line& line, std::string_view name, std::string_view version,
                FindingList& findings) {
  const unsigned long column = name.size() + componentMarker.size() + 1;
  if (name.empty()) {
    findings.add("empty-name", line.number, 1, "the entry has an empty name",
                 "write the component's name in front of \"_version=\"");
  }
  if (endsInReturn(version)) {
    findings.add("carriage-return", line.number, column,
                 "the line ends in a carriage return, which belongs to the version",
                 "end lines with a newline only");
    version.remove_suffix(1);
  }
  if (version.empty()) {
    findings.add("empty-version", line.number, column,
                 "the version of " + inQuotes(name) +
                     " is empty, which no client can tell from an unknown component",
                 "write the version behind \"_version=\"");
  }
  if (hasOuterBlank(name) || hasOuterBlank(version)) {
    findings.add("blanks", line.number, 1,
                 "blanks around the name or the version of " + inQuotes(name) + " belong to it",
                 "remove them");
  }
}

void checkEntry(const Line& line, std::size_t at, Seen& seen, FindingList& findings) {
  const std::string_view name = line.text.substr(0, at);
  checkParts(line, name, line.text.substr(at + componentMarker.size()), findings);
  const auto [first, isNew] = seen.insert({name, line.number});
  if (isNew) return;
  findings.add("duplicate-name", line.number, 1,
               "component " + inQuotes(name) + " stands in line " + std::to_string(first->second) +
                   " already, and the first one counts",
               "remove one of them");
}

void checkLine(const Line& line, Seen& seen, FindingList& findings) {
  const std::size_t at = line.text.find(componentMarker);
  if (at == std::string_view::npos) {
    checkOther(line, findings);
  } else {
    checkEntry(line, at, seen, findings);
  }
}

}  // namespace

// Lines are taken as the library takes them: a newline ends one, and nothing else does.
void checkComponentList(const InstallationFile& file, FindingList& findings) {
  const std::optional<std::string> content = readForCheck(file, findings);
  if (!content) return;
  Seen seen;
  Line line{"", 0};
  for (std::string_view rest = *content; !rest.empty();) {
    const std::size_t end = rest.find('\n');
    line = {rest.substr(0, end), line.number + 1};
    if (end == std::string_view::npos) {
      findings.add("no-last-newline", line.number, 1,
                   "the last line has no newline at its end, so it is not read",
                   "end the file with a newline");
      break;
    }
    checkLine(line, seen, findings);
    rest.remove_prefix(end + 1);
  }
}
