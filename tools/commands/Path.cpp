#include "platform/core/VRDFmDir.h"
#include "store/VRDConfiguration.h"
#include "tools/ExitStatus.h"
#include "tools/Text.h"
#include "tools/commands/Commands.h"

int runPath(const Options& options, Output& output) {
  // Needs no parameter, so the store is not woken for it.
  I18NString path = textOf(options.text);
  VRDConfiguration::determineBinDir();
  const std::string resolved = bytesOf(VRDFmDir::resolveEffectivePath(path));
  if (options.json) {
    JsonWriter writer;
    output.json(writer.beginObject().text("path", resolved).endObject());
  } else {
    output.line(resolved);
  }
  return ExitStatus::done;
}
