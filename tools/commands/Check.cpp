#include "tools/check/Checks.h"

#include <algorithm>
#include <tuple>

#include "tools/ExitStatus.h"
#include "tools/Text.h"
#include "tools/commands/Commands.h"

namespace {

using Check = void (*)(const InstallationFile&, FindingList&);

void addFindings(Check check, const InstallationFile& file, std::vector<Finding>& all) {
  FindingList findings(file.path);
  check(file, findings);
  std::vector<Finding> ordered = findings.all();
  std::stable_sort(ordered.begin(), ordered.end(), [](const Finding& left, const Finding& right) {
    return std::tie(left.line, left.column) < std::tie(right.line, right.column);
  });
  all.insert(all.end(), ordered.begin(), ordered.end());
}

/// In the order in which a process would read the files.
std::vector<Finding> findAll() {
  std::vector<Finding> all;
  addFindings(checkStartupDocument, startupDocument(), all);
  addFindings(checkLocaleDocument, localeDocument(), all);
  addFindings(checkComponentList, componentList(), all);
  return all;
}

/// FILE:LINE:COLUMN as compilers write it, so that editors find the place.
void writeText(const std::vector<Finding>& findings, Output& output) {
  for (const Finding& finding : findings) {
    std::string place = onOneLine(finding.file);
    if (finding.line != 0) {
      place += ':' + std::to_string(finding.line) + ':' + std::to_string(finding.column);
    }
    output.line(place + ": " + onOneLine(finding.message));
    output.line("    to do: " + onOneLine(finding.advice) + "  [" + finding.kind + ']');
  }
  output.line(findings.empty() ? "no findings" : "findings: " + std::to_string(findings.size()));
}

void writeJson(const std::vector<Finding>& findings, Output& output) {
  JsonWriter writer;
  writer.beginObject().key("findings").beginArray();
  for (const Finding& finding : findings) {
    writer.beginObject().text("kind", finding.kind).text("file", finding.file);
    writer.number("line", finding.line).number("column", finding.column);
    writer.text("message", finding.message).text("advice", finding.advice).endObject();
  }
  output.json(writer.endArray().endObject());
}

}  // namespace

int runCheck(const Options& options, Output& output) {
  const std::vector<Finding> findings = findAll();
  options.json ? writeJson(findings, output) : writeText(findings, output);
  return findings.empty() ? ExitStatus::done : ExitStatus::no;
}
