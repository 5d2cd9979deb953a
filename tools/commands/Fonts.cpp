#include "service/IVRDConfiguration.h"
#include "service/VRDConfigurationFactory.h"
#include "tools/ExitStatus.h"
#include "tools/Text.h"
#include "tools/commands/Commands.h"

namespace {

using Fonts = std::list<I18NString>;
using Mappings = std::map<I18NString, I18NString>;

void writeText(const Fonts& fonts, const Mappings& mappings, Output& output) {
  Table table;
  for (const I18NString& font : fonts) table.add({"supported", onOneLine(font.utf8())});
  for (const auto& [name, font] : mappings) {
    table.add({"mapped", onOneLine(name.utf8()), onOneLine(font.utf8())});
  }
  table.writeTo(output);
}

void writeJson(const Fonts& fonts, const Mappings& mappings, Output& output) {
  JsonWriter writer;
  writer.beginObject().key("fonts").beginArray();
  for (const I18NString& font : fonts) writer.text(font.utf8());
  writer.endArray().key("mappings").beginArray();
  for (const auto& [name, font] : mappings) {
    writer.beginObject().text("font", name.utf8()).text("use", font.utf8()).endObject();
  }
  output.json(writer.endArray().endObject());
}

}  // namespace

int runFonts(const Options& options, Output& output) {
  IVRDConfiguration& service = *VRDConfigurationFactory::getInstance();
  const Fonts fonts = service.getFonts("");
  const Mappings mappings = service.getFontMappings();
  options.json ? writeJson(fonts, mappings, output) : writeText(fonts, mappings, output);
  return ExitStatus::done;
}
