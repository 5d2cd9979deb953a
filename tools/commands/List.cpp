#include <fnmatch.h>

#include "tools/EffectiveConfiguration.h"
#include "tools/ExitStatus.h"
#include "tools/NearNames.h"
#include "tools/Text.h"
#include "tools/commands/Commands.h"

namespace {

/// Columns that a value may take; `get` and --json give the whole of it.
constexpr int valueWidth = 60;

std::vector<std::string> matching(const std::vector<std::string>& names,
                                  const std::string& pattern) {
  if (pattern.empty()) return names;
  std::vector<std::string> matches;
  for (const std::string& name : names) {
    if (fnmatch(pattern.c_str(), name.c_str(), 0) == 0) matches.push_back(name);
  }
  return matches;
}

void writeNames(const std::vector<std::string>& names, const Options& options, Output& output) {
  if (options.json) {
    JsonWriter writer;
    output.json(writer.beginObject().texts("names", names).endObject());
    return;
  }
  for (const std::string& name : names) output.line(onOneLine(name));
}

std::string shownValue(const EffectiveParameter& parameter) {
  return shortened(onOneLine(parameter.opaque ? innerXml(parameter.text) : parameter.text),
                   valueWidth);
}

void writeJson(const std::vector<EffectiveParameter>& parameters, Output& output) {
  JsonWriter writer;
  writer.beginObject().key("parameters").beginArray();
  for (const EffectiveParameter& parameter : parameters) parameter.writeTo(writer);
  output.json(writer.endArray().endObject());
}

void writeText(const std::vector<EffectiveParameter>& parameters, Output& output) {
  Table table;
  for (const EffectiveParameter& parameter : parameters) {
    table.add({onOneLine(parameter.name), shownValue(parameter), onOneLine(parameter.type),
               parameter.marks()});
  }
  table.writeTo(output);
}

int writeValues(const std::vector<std::string>& names, const EffectiveConfiguration& configuration,
                const Options& options, Output& output) {
  std::vector<EffectiveParameter> parameters;
  bool undecryptable = false;
  for (const std::string& name : names) {
    parameters.push_back(configuration.read(name));
    const EffectiveParameter& last = parameters.back();
    undecryptable = undecryptable || last.undecrypted || last.state != VRDCFGAPI_NoError;
  }
  options.json ? writeJson(parameters, output) : writeText(parameters, output);
  if (!undecryptable) return ExitStatus::done;
  output.error(
      "what is marked \"undecryptable\" could not be decrypted; `vrdcfg get --decrypt "
      "NAME` tells why");
  return ExitStatus::no;
}

}  // namespace

int runList(const Options& options, Output& output) {
  const EffectiveConfiguration configuration(options.decrypt);
  const std::vector<std::string> names = matching(configuration.names(), options.pattern);
  int status = ExitStatus::done;
  if (options.values) {
    status = writeValues(names, configuration, options, output);
  } else {
    writeNames(names, options, output);
  }
  if (!names.empty() || options.pattern.empty()) return status;
  output.error("no parameter matches " + inQuotes(options.pattern) + '.' +
               didYouMean(options.pattern, configuration.names()));
  return ExitStatus::no;
}
