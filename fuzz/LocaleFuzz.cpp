// The locale document with every question that it answers.
#include "fuzz/StoreReading.h"

namespace {

// Each language has its own list, which takes a while; the first few tell as much as all.
constexpr int languages = 3;

void askLocales(IVRDConfiguration& service) {
  int left = languages;
  for (const auto& entry : service.getProductLocaleList("en")) {
    const I18NString& code = entry.first;
    require(service.getProductLocaleList("en").count(code) == 1, "a code of the list");
    service.validateProductLocale(code);
    service.validateContentLocale(code);
    stateOf([&] { service.mapProductLocale(code, 1); });
    stateOf([&] { service.mapContentLocale(entry.second, 0); });
    const I18NString normal = service.normalizeLocale(code);
    require(service.normalizeLocale(normal).length() <= 5, "a normal locale");
    if (left-- <= 0) continue;
    service.getContentLocaleList(code);
    service.getCurrencies(code);
  }
}

void askFonts(IVRDConfiguration& service) {
  for (I18NString font : service.getFonts("")) {
    const auto mappings = service.getFontMappings();
    const auto mapping = mappings.find(font);
    const I18NString expected = mapping == mappings.end() ? font : mapping->second;
    require(service.mapFont(font) == expected, "a font's mapping");
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const ServiceInstallation installation(parameter("serverLocale", "de_CH"));
  installation.setLocaleDocument(textOfInput(data, size));
  const PrivateService service;
  stateOf([&] { service->getFonts(""); });  // a document that fails is told to the first who asks
  askLocales(*service);
  askFonts(*service);
  return 0;
}
