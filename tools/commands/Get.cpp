#include <algorithm>

#include "tools/EffectiveConfiguration.h"
#include "tools/ExitStatus.h"
#include "tools/NearNames.h"
#include "tools/States.h"
#include "tools/Text.h"
#include "tools/commands/Commands.h"

namespace {

/// Says what is wrong with the answer. Absent, undecryptable and empty are different answers; an
/// empty value is a good one.
int judge(const EffectiveParameter& parameter, const EffectiveConfiguration& configuration,
          const Output& output) {
  const std::string name = inQuotes(parameter.name);
  if (parameter.state != VRDCFGAPI_NoError) {
    output.error("parameter " + name + " cannot be read: " + explanationOf(parameter.state));
    return exitStatusOf(parameter.state);
  }
  if (!parameter.known) {
    output.error("there is no parameter " + name + '.' +
                 didYouMean(parameter.name, configuration.names()) +
                 " `vrdcfg list` shows all names.");
    return ExitStatus::no;
  }
  if (parameter.undecrypted) {
    output.error("parameter " + name + " holds something that could not be decrypted: " +
                 explanationOf(VRDCFGAPI_DecryptFailed));
    return ExitStatus::no;
  }
  return ExitStatus::done;
}

void writeAbsent(const std::string& name, const EffectiveConfiguration& configuration,
                 JsonWriter& writer) {
  writer.beginObject().text("name", name).truth("absent", true);
  writer.texts("near", nearNames(name, configuration.names())).endObject();
}

void writeJson(const std::vector<EffectiveParameter>& parameters,
               const EffectiveConfiguration& configuration, Output& output) {
  JsonWriter writer;
  writer.beginObject().key("parameters").beginArray();
  for (const EffectiveParameter& parameter : parameters) {
    if (parameter.known) {
      parameter.writeTo(writer);
    } else {
      writeAbsent(parameter.name, configuration, writer);
    }
  }
  output.json(writer.endArray().endObject());
}

/// One value stands alone, as a script wants it; several stand behind their names.
void writeText(const std::vector<EffectiveParameter>& parameters, Output& output) {
  Table table;
  for (const EffectiveParameter& parameter : parameters) {
    if (!parameter.known || parameter.state != VRDCFGAPI_NoError) continue;
    if (parameters.size() == 1) {
      output.line(parameter.text);
    } else {
      table.add({onOneLine(parameter.name), onOneLine(parameter.text)});
    }
  }
  table.writeTo(output);
}

}  // namespace

// The worst of the answers decides the exit status; the good ones are written all the same.
int runGet(const Options& options, Output& output) {
  const EffectiveConfiguration configuration(options.decrypt);
  std::vector<EffectiveParameter> parameters;
  int status = ExitStatus::done;
  for (const std::string& name : options.names) {
    parameters.push_back(options.xml ? configuration.readXml(name) : configuration.read(name));
    status = std::max(status, judge(parameters.back(), configuration, output));
  }
  if (options.json) {
    writeJson(parameters, configuration, output);
  } else {
    writeText(parameters, output);
  }
  return status;
}
