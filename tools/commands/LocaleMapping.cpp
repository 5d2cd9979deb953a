#include "foundation/VRDConfigurationException.h"
#include "service/IVRDConfiguration.h"
#include "service/VRDConfigurationFactory.h"
#include "tools/ExitStatus.h"
#include "tools/States.h"
#include "tools/Text.h"
#include "tools/commands/Commands.h"

namespace {

int writeLocale(const I18NString& locale, const Options& options, Output& output) {
  if (options.json) {
    JsonWriter writer;
    output.json(writer.beginObject().text("locale", locale.utf8()).endObject());
  } else {
    output.line(onOneLine(locale.utf8()));
  }
  return ExitStatus::done;
}

I18NString mapped(const Options& options) {
  IVRDConfiguration& service = *VRDConfigurationFactory::getInstance();
  const I18NString locale = textOf(options.locale);
  return options.content ? service.mapContentLocale(locale, 1)
                         : service.mapProductLocale(locale, 1);
}

}  // namespace

// Without a mapping the answer is "no"; any other failure is one.
int runMapLocale(const Options& options, Output& output) {
  try {
    return writeLocale(mapped(options), options, output);
  } catch (const VRDConfigurationException& error) {
    if (error.getCode() != VRDCFGAPI_LocaleUnmapped) throw;
    output.error("locale " + inQuotes(options.locale) + ": " +
                 explanationOf(VRDCFGAPI_LocaleUnmapped));
    return ExitStatus::no;
  }
}

int runNormalizeLocale(const Options& options, Output& output) {
  IVRDConfiguration& service = *VRDConfigurationFactory::getInstance();
  return writeLocale(service.normalizeLocale(textOf(options.text)), options, output);
}
