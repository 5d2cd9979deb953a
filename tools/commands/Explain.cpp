#include <algorithm>

#include "tools/EffectiveConfiguration.h"
#include "tools/ExitStatus.h"
#include "tools/NearNames.h"
#include "tools/Origins.h"
#include "tools/StartupVocabulary.h"
#include "tools/States.h"
#include "tools/Text.h"
#include "tools/commands/Commands.h"

namespace {

/// A parameter with everything that gives it a value.
class Explanation {
 public:
  Explanation(EffectiveParameter parameter, std::vector<Origin> origins)
      : m_parameter(std::move(parameter)), m_origins(std::move(origins)) {
    for (const Origin& origin : m_origins) {
      if (origin.whyIgnored.empty()) m_inForce = &origin;
    }
  }
  Explanation(const Explanation&) = delete;
  Explanation& operator=(const Explanation&) = delete;

  void writeText(Output& output) const {
    Table table;
    table.add({"name", onOneLine(m_parameter.name)});
    if (m_parameter.known) addParameter(table);
    for (const Origin& origin : m_origins) addOrigin(origin, table);
    table.writeTo(output);
  }

  void writeJson(Output& output) const {
    JsonWriter writer;
    writer.beginObject().text("name", m_parameter.name).truth("absent", !m_parameter.known);
    if (m_parameter.known) {
      writer.key("parameter");
      m_parameter.writeTo(writer);
      writer.truth("path", isPath());
    }
    writer.key("origins").beginArray();
    for (const Origin& origin : m_origins) writeOrigin(origin, writer);
    output.json(writer.endArray().endObject());
  }

 private:
  bool isPath() const {
    return m_parameter.type == FolderPathType || m_parameter.type == FilePathType;
  }

  const char* roleOf(const Origin& origin) const {
    if (&origin == m_inForce) return "in force";
    return origin.whyIgnored.empty() ? "displaced" : "ignored";
  }

  std::string marks() const {
    std::string marks = m_parameter.marks();
    if (!isPath()) return marks;
    return marks.empty() ? "path" : "path," + marks;
  }

  void addParameter(Table& table) const {
    const bool read = m_parameter.state == VRDCFGAPI_NoError;
    table.add({"value", read ? onOneLine(m_parameter.text) : explanationOf(m_parameter.state)});
    if (isPath() && m_inForce != nullptr) table.add({"before rewriting", m_inForce->text});
    if (!m_parameter.type.empty()) table.add({"type", onOneLine(m_parameter.type)});
    if (!marks().empty()) table.add({"marks", marks()});
  }

  void addOrigin(const Origin& origin, Table& table) const {
    std::string row = origin.place();
    if (!origin.whyIgnored.empty()) row += ", since " + origin.whyIgnored;
    if (origin.whyIgnored.empty() && &origin != m_inForce) row += ": " + origin.text;
    table.add({roleOf(origin), row});
  }

  void writeOrigin(const Origin& origin, JsonWriter& writer) const {
    writer.beginObject().text("role", roleOf(origin)).text("source", origin.source);
    if (!origin.file.empty()) {
      writer.text("file", origin.file).number("line", origin.line).number("column", origin.column);
    }
    writer.text("text", origin.text);
    if (!origin.whyIgnored.empty()) writer.text("whyIgnored", origin.whyIgnored);
    writer.endObject();
  }

  EffectiveParameter m_parameter;
  std::vector<Origin> m_origins;
  const Origin* m_inForce = nullptr;
};

}  // namespace

// An unknown parameter is explained as well, if some document holds it: that it is disabled, or has
// no value, is what its author looks for.
int runExplain(const Options& options, Output& output) {
  const EffectiveConfiguration configuration(options.decrypt);
  const EffectiveParameter parameter = configuration.read(options.text);
  const std::vector<Origin> origins = originsOf(options.text, options.queryFiles);
  if (!parameter.known) {
    output.error("there is no parameter " + inQuotes(options.text) + " in force." +
                 didYouMean(options.text, configuration.names()));
  }
  if (parameter.known || !origins.empty() || options.json) {
    const Explanation explanation(parameter, origins);
    options.json ? explanation.writeJson(output) : explanation.writeText(output);
  }
  return parameter.known ? exitStatusOf(parameter.state) : ExitStatus::no;
}
