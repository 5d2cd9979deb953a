#include <algorithm>

#include "service/ComponentMarker.h"
#include "service/IVRDConfiguration.h"
#include "service/VRDConfigurationFactory.h"
#include "tools/ExitStatus.h"
#include "tools/FileContent.h"
#include "tools/Installation.h"
#include "tools/NearNames.h"
#include "tools/Text.h"
#include "tools/commands/Commands.h"

namespace {

/// The names in the component list. The library answers an unknown one and an empty version alike.
std::vector<std::string> componentNames(const std::string& path) {
  std::vector<std::string> names;
  const std::string content = readFile(path).value_or("");
  std::string_view rest = content;
  for (std::size_t end = rest.find('\n'); end != std::string_view::npos; end = rest.find('\n')) {
    const std::string_view line = rest.substr(0, end);
    const std::size_t at = line.find(componentMarker);
    if (at != std::string_view::npos) names.emplace_back(line.substr(0, at));
    rest.remove_prefix(end + 1);
  }
  return names;
}

}  // namespace

int runComponent(const Options& options, Output& output) {
  IVRDConfiguration& service = *VRDConfigurationFactory::getInstance();
  const std::string version = bytesOf(service.getComponentVersion(textOf(options.text)));
  const std::string path = componentList().path;
  const std::vector<std::string> names = componentNames(path);
  if (version.empty() && std::find(names.begin(), names.end(), options.text) == names.end()) {
    output.error("there is no component " + inQuotes(options.text) + " in " + onOneLine(path) +
                 '.' + didYouMean(options.text, names));
    return ExitStatus::no;
  }
  if (options.json) {
    JsonWriter writer;
    writer.beginObject().text("component", options.text).text("version", version);
    output.json(writer.endObject());
  } else {
    output.line(version);
  }
  return ExitStatus::done;
}
