#include "tools/Origins.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "platform/mcf/DefaultLists.h"
#include "tools/FileContent.h"
#include "tools/Installation.h"
#include "tools/LocatedDocument.h"
#include "tools/Secrets.h"
#include "tools/StartupVocabulary.h"
#include "tools/Text.h"

namespace {

constexpr char advancedSettings[] = "advancedSettings";
constexpr char queryResult[] = "queryResult";

constexpr char fromStartup[] = "startup document";
constexpr char fromQuery[] = "query result";

/// More is masked than the doors would: an origin is shown to tell which it is, not what it holds.
bool holdsSecret(const LocatedElement& element) {
  return element.says("encrypted") || element.type() == SystemPasswordType ||
         std::any_of(element.children.begin(), element.children.end(), holdsSecret);
}

std::string shownValue(const LocatedDocument& document, const LocatedElement& value) {
  if (holdsSecret(value)) return secretMask;
  if (value.children.empty()) return onOneLine(value.text);
  return onOneLine(document.bytes().substr(value.tagEnd, value.contentEnd - value.tagEnd));
}

/// Follows the sources of the effective tree in the library's order:
///   1. the runtime defaults;
///   2. the startup document or, if it cannot be had, the startup defaults;
///   3. the query results in their order, each followed by the advanced settings in it.
class OriginWalk {
 public:
  OriginWalk(std::string name, const std::vector<QueryFile>& queries)
      : m_name(std::move(name)), m_queries(queries) {}

  std::vector<Origin> walkBeforeQueries() {
    addDefaults("runtime default", getruntimeDefaults());
    addStartup();
    return m_origins;
  }

  std::vector<Origin> walk() {
    walkBeforeQueries();
    m_advancedKnown = isKnownBeforeQueries(advancedSettings);
    for (const QueryFile& query : m_queries) addQuery(query);
    return m_origins;
  }

 private:
  static bool isTaken(const Origin& origin) { return origin.whyIgnored.empty(); }

  bool isKnownBeforeQueries(const char* name) const {
    const std::vector<Origin> origins = OriginWalk(name, m_queries).walkBeforeQueries();
    return std::any_of(origins.begin(), origins.end(), isTaken);
  }

  void add(const char* source, const std::string& file, const LocatedElement& element,
           std::string text, std::string whyIgnored = "") {
    m_origins.push_back(
        {source, file, element.line, element.column, std::move(text), std::move(whyIgnored)});
  }

  /// A default never displaces another one.
  void addDefaults(const char* source, const char* const* pairs) {
    for (; **pairs != '\0'; pairs += 2) {
      if (m_name != pairs[0]) continue;
      const bool isTakenAlready = std::any_of(m_origins.begin(), m_origins.end(), isTaken);
      m_origins.push_back({source, "", 0, 0, onOneLine(pairs[1]),
                           isTakenAlready ? "an earlier default has the name" : ""});
    }
  }

  void addStartup() {
    const InstallationFile file = startupDocument();
    std::optional<std::string> content;
    if (file.trouble.empty()) content = readFile(file.path);
    const LocatedDocument document(content.value_or(""));
    if (!document.parsed()) return addDefaults("startup default", getstartupDefaults());
    if (!isStartupRoot(document.root())) return;
    for (const LocatedElement& child : document.root().children) {
      if (isParameter(child) && nameOf(child) == m_name) addStartup(document, file.path, child);
    }
  }

  void addStartup(const LocatedDocument& document, const std::string& file,
                  const LocatedElement& parameter) {
    const LocatedElement* value = valueOf(parameter);
    if (isDisabled(parameter)) return add(fromStartup, file, parameter, "", "it is disabled");
    if (value == nullptr) return add(fromStartup, file, parameter, "", "it has no value");
    add(fromStartup, file, parameter, shownValue(document, *value));
  }

  void addQuery(const QueryFile& query) {
    const LocatedDocument document(query.content);
    if (!document.parsed()) return;
    if (document.root().localName == queryResult) {
      addResult(document, query.name, document.root());
    } else {
      addResultsBelow(document, query.name, document.root());
    }
  }

  /// A result inside another result is one of its own, as it is for the library.
  void addResultsBelow(const LocatedDocument& document, const std::string& file,
                       const LocatedElement& parent) {
    for (const LocatedElement& child : parent.children) {
      if (child.qualifiedName == queryResult) addResult(document, file, child);
      addResultsBelow(document, file, child);
    }
  }

  /// The parameters stand two levels below a result.
  void addResult(const LocatedDocument& document, const std::string& file,
                 const LocatedElement& result) {
    for (const LocatedElement& group : result.children) {
      for (const LocatedElement& parameter : group.children) {
        const LocatedElement* value = parameter.child("value");
        if (parameter.qualifiedName == m_name) addResultValue(document, file, parameter, value);
        if (parameter.qualifiedName == advancedSettings && value != nullptr) {
          addSettings(file, parameter, *value);
        }
      }
    }
  }

  void addResultValue(const LocatedDocument& document, const std::string& file,
                      const LocatedElement& parameter, const LocatedElement* value) {
    if (value == nullptr) return add(fromQuery, file, parameter, "", "it has no value");
    add(fromQuery, file, parameter, shownValue(document, *value));
  }

  /// Advanced settings are applied when the parameter first enters the table, and never again.
  void addSettings(const std::string& file, const LocatedElement& parameter,
                   const LocatedElement& value) {
    const bool known = std::exchange(m_advancedKnown, true);
    const LocatedDocument settings(value.text);
    if (!settings.parsed()) return;
    for (const LocatedElement& setting : settings.root().children) {
      if (nameOf(setting) != m_name) continue;
      std::string why = known ? "advanced settings stood already, and are applied once" : "";
      if (setting.text.empty()) why = "it is empty";
      add("advanced setting", file, parameter, onOneLine(setting.text), why);
    }
  }

  std::string m_name;
  const std::vector<QueryFile>& m_queries;
  std::vector<Origin> m_origins;
  bool m_advancedKnown = false;
};

}  // namespace

std::string Origin::place() const {
  if (file.empty()) return source;
  return std::string(source) + ' ' + onOneLine(file) + ':' + std::to_string(line) + ':' +
         std::to_string(column);
}

std::vector<Origin> originsOf(const std::string& name, const std::vector<QueryFile>& queries) {
  return OriginWalk(name, queries).walk();
}
