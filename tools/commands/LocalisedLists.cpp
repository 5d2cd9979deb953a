#include "service/IVRDConfiguration.h"
#include "service/VRDConfigurationFactory.h"
#include "tools/ExitStatus.h"
#include "tools/Text.h"
#include "tools/commands/Commands.h"

namespace {

using Names = std::map<I18NString, I18NString>;
using ListOperation = Names (IVRDConfiguration::*)(const I18NString&);

/// The four lists differ in nothing but the operation that gives them.
int writeList(ListOperation operation, const Options& options, Output& output) {
  const Names names = (VRDConfigurationFactory::getInstance()->*operation)(textOf(options.locale));
  if (options.json) {
    JsonWriter writer;
    writer.beginObject().key("entries").beginArray();
    for (const auto& [code, name] : names) {
      writer.beginObject().text("code", code.utf8()).text("name", name.utf8()).endObject();
    }
    output.json(writer.endArray().endObject());
    return ExitStatus::done;
  }
  Table table;
  for (const auto& [code, name] : names) {
    table.add({onOneLine(code.utf8()), onOneLine(name.utf8())});
  }
  table.writeTo(output);
  return ExitStatus::done;
}

}  // namespace

int runLocales(const Options& options, Output& output) {
  return writeList(&IVRDConfiguration::getProductLocaleList, options, output);
}

int runContentLocales(const Options& options, Output& output) {
  return writeList(&IVRDConfiguration::getContentLocaleList, options, output);
}

int runTimeZones(const Options& options, Output& output) {
  return writeList(&IVRDConfiguration::getTimeZones, options, output);
}

int runCurrencies(const Options& options, Output& output) {
  return writeList(&IVRDConfiguration::getCurrencies, options, output);
}
