#include <algorithm>
#include <set>

#include "foundation/ConfigurationVocabulary.h"
#include "foundation/ElementWalk.h"
#include "platform/idom/VRDIDOM_DOMImplementation.h"
#include "platform/idom/VRDIDOM_Helper.h"
#include "platform/idom/VRDIDOM_Parser.h"
#include "startup/VRDStartupConfiguration.h"
#include "store/VRDConfiguration.h"
#include "tools/EffectiveConfiguration.h"
#include "tools/ExitStatus.h"
#include "tools/NearNames.h"
#include "tools/Secrets.h"
#include "tools/States.h"
#include "tools/Text.h"
#include "tools/commands/Commands.h"

namespace {

constexpr int valueWidth = 45;

/// A parameter as it stands on disk beside what is in force.
struct Comparison {
  std::string name;
  bool onDisk = false;
  std::string diskText;
  bool diskOpaque = false;
  EffectiveParameter inForce;
  bool differs = false;
};

/// The names of the plain parameters on disk whose text must not be shown: a text alone does not
/// tell its marks.
std::set<std::string> secretNames() {
  VRDIDOM_Document document = VRDIDOM_DOMImplementation::getInstance().createDocument();
  std::set<std::string> names;
  if (VRDConfiguration::getConfigDoc(document) != VRDCFGAPI_NoError) return names;
  VRDIDOM_Element root = document.getDocumentElement();
  forEachChildElement(root, [&](VRDIDOM_Element& parameter) {
    forEachChildElement(parameter, [&](VRDIDOM_Element& value) {
      if (isSecret(value)) names.insert(bytesOf(parameter.getAttribute("name")));
    });
  });
  return names;
}

/// The value element that the text of an opaque parameter is; null for any other text.
VRDIDOM_Element valueIn(const std::string& text) {
  VRDIDOM_Parser parser(0);
  VRDIDOM_Document document;
  if (parser.parse(text.c_str(), static_cast<int>(text.size()), document) == 0) return {};
  VRDIDOM_Element root = document.getDocumentElement();
  return root.isNamed(ConfigNamespaceUri, "value") != 0 ? root : VRDIDOM_Element();
}

/// Puts the text on disk into @p comparison, with what is secret in it masked.
void showOnDisk(const std::string& stored, bool secret, Comparison& comparison) {
  VRDIDOM_Element value = valueIn(stored);
  comparison.diskOpaque = !value.isNull();
  if (comparison.diskOpaque && maskSecrets(value)) {
    I18NString xml;
    VRDIDOM_Helper::write(value, xml);
    comparison.diskText = bytesOf(xml);
  } else {
    comparison.diskText = secret ? secretMask : stored;
  }
}

class StartupDocument {
 public:
  /// Reads the document. @return its state
  VRDCFGAPI_ErrorState read() {
    std::list<I18NString> names;
    const VRDCFGAPI_ErrorState state = m_startup.getParameterNames(names);
    for (const I18NString& name : names) m_names.insert(bytesOf(name));
    m_secretNames = secretNames();
    return state;
  }

  const std::set<std::string>& names() const { return m_names; }

  Comparison compare(const std::string& name, const EffectiveConfiguration& configuration) {
    Comparison comparison;
    comparison.name = name;
    comparison.onDisk = m_names.count(name) != 0;
    comparison.inForce = configuration.read(name);
    const std::string stored = diskText(name);
    comparison.differs = comparison.onDisk != comparison.inForce.known || stored != forceText(name);
    showOnDisk(stored, m_secretNames.count(name) != 0, comparison);
    return comparison;
  }

 private:
  std::string diskText(const std::string& name) {
    I18NString text;
    m_startup.getValue(textOf(name), 0, text);
    return bytesOf(text);
  }

  static std::string forceText(const std::string& name) {
    I18NString text;
    VRDConfiguration::getInstance()->getValue(textOf(name), 0, text);
    return bytesOf(text);
  }

  VRDStartupConfiguration m_startup;
  std::set<std::string> m_names;
  std::set<std::string> m_secretNames;
};

std::string shown(bool there, bool opaque, const std::string& text) {
  if (!there) return "(absent)";
  return shortened(onOneLine(opaque ? innerXml(text) : text), valueWidth);
}

void writeText(const std::vector<Comparison>& comparisons, Output& output) {
  Table table;
  table.add({"NAME", "ON DISK", "IN FORCE"});
  for (const Comparison& each : comparisons) {
    table.add(
        {onOneLine(each.name), shown(each.onDisk, each.diskOpaque, each.diskText),
         each.differs ? shown(each.inForce.known, each.inForce.opaque, each.inForce.text) : "="});
  }
  table.writeTo(output);
}

void writeJson(const std::vector<Comparison>& comparisons, Output& output) {
  JsonWriter writer;
  writer.beginObject().key("parameters").beginArray();
  for (const Comparison& each : comparisons) {
    writer.beginObject().text("name", each.name).truth("differs", each.differs);
    if (each.onDisk) writer.text("onDisk", each.diskText);
    if (each.inForce.known) writer.text("inForce", each.inForce.text);
    writer.endObject();
  }
  output.json(writer.endArray().endObject());
}

/// What stands on disk and what is in force: either can hold a name that the other does not.
std::vector<std::string> allNames(const StartupDocument& document,
                                  const EffectiveConfiguration& configuration) {
  std::set<std::string> names = document.names();
  names.insert(configuration.names().begin(), configuration.names().end());
  return std::vector<std::string>(names.begin(), names.end());
}

}  // namespace

int runStartup(const Options& options, Output& output) {
  StartupDocument document;
  const VRDCFGAPI_ErrorState state = document.read();
  if (state != VRDCFGAPI_NoError) {
    output.error(explanationOf(state));
    return ExitStatus::cannotRun;
  }
  const EffectiveConfiguration configuration(false);
  const std::vector<std::string> names = allNames(document, configuration);
  std::vector<Comparison> comparisons;
  for (const std::string& name : names) {
    if (options.text.empty() || name == options.text) {
      comparisons.push_back(document.compare(name, configuration));
    }
  }
  if (comparisons.empty() && !options.text.empty()) {
    output.error("there is no parameter " + inQuotes(options.text) + " on disk or in force." +
                 didYouMean(options.text, names));
    return ExitStatus::no;
  }
  options.json ? writeJson(comparisons, output) : writeText(comparisons, output);
  return ExitStatus::done;
}
