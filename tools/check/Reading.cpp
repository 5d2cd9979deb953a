#include <cerrno>
#include <cstring>

#include "tools/FileContent.h"
#include "tools/check/Checks.h"

std::optional<std::string> readForCheck(const InstallationFile& file, FindingList& findings) {
  if (!file.trouble.empty()) {
    findings.add("missing-file",
                 std::string("the ") + file.role + " cannot be had: " + file.trouble,
                 "put a readable file in this place");
    return std::nullopt;
  }
  std::optional<std::string> content = readFile(file.path);
  if (!content) {
    findings.add("missing-file",
                 std::string("the ") + file.role + " cannot be read: " + std::strerror(errno),
                 "make it readable");
  }
  return content;
}

// One finding for the whole document: behind the first error nothing can be told for sure.
std::optional<LocatedDocument> parseForCheck(const InstallationFile& file, FindingList& findings) {
  std::optional<std::string> content = readForCheck(file, findings);
  if (!content) return std::nullopt;
  LocatedDocument document(std::move(*content));
  if (document.parsed()) return document;
  findings.add("parse-error", document.errorLine(), document.errorColumn(),
               "does not parse, so nothing in it counts: " + document.errorText(),
               "make it well-formed XML without a DOCTYPE");
  return std::nullopt;
}
