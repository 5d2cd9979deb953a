// Unit VRDConfigurationImpl: fonts, which have no names in other languages.

#include "service/VRDConfigurationImpl.h"

std::list<I18NString> VRDConfigurationImpl::getFonts(const I18NString&) {
  initializeFonts();
  return m_fonts.copy();
}

I18NString& VRDConfigurationImpl::mapFont(I18NString& font) {
  initializeFonts();
  m_fontMappings.read([&](const TextMap& mappings) {
    const auto mapping = mappings.find(font);
    if (mapping != mappings.end()) font = mapping->second;
  });
  return font;
}

VRDConfigurationImpl::TextMap VRDConfigurationImpl::getFontMappings() {
  initializeFonts();
  return m_fontMappings.copy();
}
