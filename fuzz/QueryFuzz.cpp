// Query results for a loaded store, with the tables that they replace.
#include "fuzz/StoreReading.h"

namespace {

void readTables(IVRDConfiguration& service) {
  service.getProductLocaleList("de");
  service.getContentLocaleList("de");
  service.getCurrencies("de");
  service.getFontMappings();
  for (I18NString font : service.getFonts("de")) service.mapFont(font);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const CurrentInstallation installation(
      parameter("plain", "value") + parameter("path", "../%HOME%", "", "xsi:type='cfg:filePath'") +
      parameter("tree", "<a>b</a>", "opaque='true'") +
      parameter("secret", "AAAA", "", "encrypted='true'"));
  startOver();
  const PrivateService service;
  I18NString before, after;
  store().getValue("", 0, before);
  std::istringstream text(textOfInput(data, size));
  IBJBufferedInputStream stream(text);
  const long state = stateOf([&] { service->init(stream); });
  if (state == VRDCFGAPI_StreamParseFailed) {
    store().getValue("", 0, after);
    require(after == before, "what stood before a stream that does not parse");
  }
  readStore(*service);
  stateOf([&] { readTables(*service); });
  return 0;
}
