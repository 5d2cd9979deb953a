#include "tools/ValueEdit.h"

#include <string_view>
#include <vector>

#include "tools/NearNames.h"
#include "tools/StartupVocabulary.h"
#include "tools/Text.h"

namespace {

constexpr std::string_view blanks = " \t\r\n";

LocatedDocument parsed(const std::string& content) {
  LocatedDocument document(content);
  if (!document.parsed()) {
    throw ValueEditError("the startup document does not parse: " + document.errorText() +
                         " (line " + std::to_string(document.errorLine()) + ')');
  }
  if (!isStartupRoot(document.root())) {
    throw ValueEditError("the root of the startup document is not \"parameters\"");
  }
  return document;
}

bool counts(const LocatedElement& element) {
  return isParameter(element) && !isDisabled(element) && valueOf(element) != nullptr;
}

const LocatedElement& parameterCalled(const std::string& name, const LocatedElement& root) {
  const LocatedElement* found = nullptr;
  std::vector<std::string> names;
  for (const LocatedElement& child : root.children) {
    if (!counts(child)) continue;
    names.push_back(nameOf(child));
    if (names.back() == name) found = &child;
  }
  if (found != nullptr) return *found;
  throw ValueEditError("there is no parameter " + inQuotes(name) +
                       " with a value in the document." + didYouMean(name, names));
}

const LocatedElement& plainValueOf(const LocatedElement& parameter) {
  const LocatedElement& value = *valueOf(parameter);
  if (!parameter.says("opaque") && value.children.empty()) return value;
  throw ValueEditError(
      "parameter " + inQuotes(nameOf(parameter)) +
      " holds XML; make the text with `vrdcfg protect` and put it into the element "
      "that is to hold it, with encrypted=\"true\"");
}

/// Where the value of attribute @p name begins and ends in a start tag; both npos if it is not
/// there.
struct Range {
  std::size_t begin = std::string::npos;
  std::size_t end = std::string::npos;
};

Range attributeValueIn(const std::string& tag, std::string_view name) {
  std::size_t at = tag.find_first_of(blanks);
  while (at != std::string::npos) {
    at = tag.find_first_not_of(blanks, at);
    const std::size_t nameEnd = tag.find_first_of(" \t\r\n=/>", at);
    if (nameEnd == at) break;  // the end of the tag
    const std::size_t open = tag.find_first_of("\"'", nameEnd);
    const std::size_t close = tag.find(tag[open], open + 1);
    if (tag.compare(at, nameEnd - at, name) == 0) return {open + 1, close};
    at = close + 1;
  }
  return {};
}

std::string marked(std::string tag) {
  const Range mark = attributeValueIn(tag, "encrypted");
  if (mark.begin == std::string::npos) {
    return tag.insert(tag.find_first_of(" \t\r\n/>"), " encrypted=\"true\"");
  }
  return tag.replace(mark.begin, mark.end - mark.begin, "true");
}

/// The start tag of an element without content, opened so that it can hold some.
std::string opened(std::string tag) {
  tag.resize(tag.find_last_not_of(blanks, tag.size() - std::string_view("/>").size() - 1) + 1);
  return tag + '>';
}

/// Takes the tag as it stands, with the order and quotes of its attributes, and touches the mark
/// only.
std::string edited(const std::string& bytes, const LocatedElement& value,
                   const std::string& storedText) {
  std::string tag = bytes.substr(value.tagBegin, value.tagEnd - value.tagBegin);
  if (!value.says("encrypted")) tag = marked(tag);
  const bool empty = tag[tag.size() - 2] == '/';
  const std::string content =
      empty ? opened(tag) + storedText + "</" + value.qualifiedName + '>' : tag + storedText;
  return bytes.substr(0, value.tagBegin) + content + bytes.substr(value.contentEnd);
}

/// What is about to be written must say what was meant.
void verify(const std::string& content, const std::string& name, const std::string& storedText) {
  const LocatedDocument document = parsed(content);
  const LocatedElement& value = *valueOf(parameterCalled(name, document.root()));
  if (value.text != storedText || !value.says("encrypted")) {
    throw ValueEditError("the value cannot be replaced in this document");
  }
}

}  // namespace

// Edited as bytes and not as a tree: a tree does not know how its author wrote it.
std::string withProtectedValue(const std::string& content, const std::string& name,
                               const std::string& storedText) {
  const LocatedDocument document = parsed(content);
  const LocatedElement& value = plainValueOf(parameterCalled(name, document.root()));
  std::string result = document.encoded(edited(document.bytes(), value, storedText));
  verify(result, name, storedText);
  return result;
}
