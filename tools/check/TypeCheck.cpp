#include "store/VRDConfiguration.h"
#include "tools/NearNames.h"
#include "tools/StartupVocabulary.h"
#include "tools/Text.h"
#include "tools/check/Checks.h"

namespace {

constexpr std::string_view knownTypes[] = {FolderPathType, FilePathType, SystemPasswordType};
/// More than this many wrong letters make another word.
constexpr int nearDistance = 2;

std::string_view localPart(std::string_view name) { return name.substr(name.find(':') + 1); }

/// The known type that @p type was probably meant to be; empty for a known and for a strange one.
std::string_view meantType(std::string_view type) {
  for (const std::string_view known : knownTypes) {
    if (type == known) return "";
  }
  for (const std::string_view known : knownTypes) {
    if (editDistance(localPart(type), localPart(known)) <= nearDistance) return known;
  }
  return "";
}

void checkSpelling(const LocatedElement& value, FindingList& findings) {
  const std::string type = value.type();
  const std::string_view meant = type.empty() ? "" : meantType(type);
  if (meant.empty()) return;
  findings.add("unknown-type", value,
               "type " + inQuotes(type) + " is not known, so the value is taken as it stands",
               "write it exactly " + inQuotes(meant) + ", prefix included");
}

/// What keeps a "%" in @p text after all references were replaced.
std::string reasonOf(const std::string& text) {
  const std::size_t open = text.find('%');
  const std::size_t close = text.find('%', open + 1);
  if (close == std::string::npos) return "a \"%\" has no partner";
  const std::string name = text.substr(open + 1, close - open - 1);
  return ::getenv(name.c_str()) == nullptr
             ? "the variable " + inQuotes(name) + " is not set here"
             : "the reference to " + inQuotes(name) + " stands too close behind another one";
}

/// A path is resolved only when no "%" is left in it.
void checkPath(const LocatedElement& value, FindingList& findings) {
  const std::string text = bytesOf(VRDConfiguration::replaceEnvVariables(textOf(value.text)));
  if (text.find('%') == std::string::npos) return;
  findings.add(
      "unresolved-path", value,
      "the path " + inQuotes(text) + " keeps a \"%\", so it is not resolved: " + reasonOf(text),
      "set the variable in the environment of the processes, or correct the path");
}

}  // namespace

void checkTypes(const LocatedElement& parameter, FindingList& findings) {
  forEachElement(parameter, [&](const LocatedElement& element) {
    checkSpelling(element, findings);
    if (isPathValue(element)) checkPath(element, findings);
  });
}
