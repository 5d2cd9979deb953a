// Unit VRDConfigurationImpl: codes with their names in the language of the caller's choice.

#include <optional>
#include <utility>

#include "platform/core/I18NLibrary.h"
#include "platform/core/I18NNumericFormat.h"
#include "platform/core/I18NTimeZone.h"
#include "service/VRDConfigurationImpl.h"

/// A list of codes with the cache of its names.
struct VRDConfigurationImpl::LocalisedList {
  void (VRDConfigurationImpl::*initialize)();
  ServiceTable<TextList> VRDConfigurationImpl::*codes;
  ServiceTable<NameCache> VRDConfigurationImpl::*names;
  VRDThreadCriticalSection VRDConfigurationImpl::*mutex;
  CodeKind kind;
};

constexpr VRDConfigurationImpl::LocalisedList VRDConfigurationImpl::productLocaleNames{
    &VRDConfigurationImpl::initializeProductLocaleMaps, &VRDConfigurationImpl::m_productLocales,
    &VRDConfigurationImpl::m_productLocalesMap, &VRDConfigurationImpl::m_productLocaleMutex,
    CodeKind::Locale};

constexpr VRDConfigurationImpl::LocalisedList VRDConfigurationImpl::contentLocaleNames{
    &VRDConfigurationImpl::initializeContentLocaleMaps, &VRDConfigurationImpl::m_contentLocales,
    &VRDConfigurationImpl::m_contentLocalesMap, &VRDConfigurationImpl::m_contentLocaleMutex,
    CodeKind::Locale};

constexpr VRDConfigurationImpl::LocalisedList VRDConfigurationImpl::timeZoneNames{
    &VRDConfigurationImpl::initializeTimeZones, &VRDConfigurationImpl::m_timeZones,
    &VRDConfigurationImpl::m_timeZonesMap, &VRDConfigurationImpl::m_timeZoneMutex,
    CodeKind::TimeZone};

constexpr VRDConfigurationImpl::LocalisedList VRDConfigurationImpl::currencyNames{
    &VRDConfigurationImpl::initializeCurrencies, &VRDConfigurationImpl::m_currencies,
    &VRDConfigurationImpl::m_currenciesMap, &VRDConfigurationImpl::m_currencyMutex,
    CodeKind::Currency};

namespace {

using CodeKind = VRDConfigurationImpl::CodeKind;

I18NLocale localeOf(const I18NString& code) {
  return I18NLocale(code.c_str(I18NGetPlatformDefaultEncoding()));
}

/// None for a kind that nobody knows: a list of such codes has no entries.
std::optional<I18NString> nameOf(const I18NString& code, CodeKind kind, I18NLocale& displayLocale) {
  I18NString name;
  switch (kind) {
    case CodeKind::Locale:
      localeOf(code).getDisplayName(name, displayLocale);
      return name;
    case CodeKind::TimeZone:
      I18NTimeZone(code).getDisplayName(name, displayLocale);
      return name;
    case CodeKind::Currency:
      return I18NNumericFormat::getCurrencyDescription(code, &displayLocale);
  }
  return std::nullopt;
}

}  // namespace

std::shared_ptr<const VRDConfigurationImpl::TextMap> VRDConfigurationImpl::getListFromMapHelper(
    const I18NString& locale, NameCache* cache, const TextList* list, CodeKind kind) {
  const auto cached = cache->find(locale);
  if (cached != cache->end()) return cached->second;

  const auto names = std::make_shared<TextMap>();
  I18NLocale displayLocale = localeOf(locale);
  for (const I18NString& code : *list) {
    std::optional<I18NString> name = nameOf(code, kind, displayLocale);
    // Most lists are in the order of their codes, so the end is the place.
    if (name) names->emplace_hint(names->end(), code, std::move(*name));
  }
  cache->emplace(locale, names);
  return names;
}

/// The lock is held while names are computed, so threads that ask for the same new language compute
/// them once.
std::shared_ptr<const VRDConfigurationImpl::TextMap> VRDConfigurationImpl::findNames(
    const LocalisedList& list, const I18NString& locale) {
  I18NString key = locale.empty() ? I18NString("en") : locale;
  normalizeLocaleHelper(key);
  VRDThreadCriticalSection& mutex = this->*list.mutex;
  VRDThreadGuard guard(mutex);
  return getListFromMapHelper(key, &(this->*list.names).held(mutex),
                              &(this->*list.codes).held(mutex), list.kind);
}

/// The copy is made without the lock: the names are shared with the cache and stay, should a reload
/// empty it.
VRDConfigurationImpl::TextMap VRDConfigurationImpl::namesOf(const LocalisedList& list,
                                                            const I18NString& locale) {
  (this->*list.initialize)();
  return *findNames(list, locale);
}

VRDConfigurationImpl::TextMap VRDConfigurationImpl::getProductLocaleList(const I18NString& locale) {
  return namesOf(productLocaleNames, locale);
}

VRDConfigurationImpl::TextMap VRDConfigurationImpl::getContentLocaleList(const I18NString& locale) {
  return namesOf(contentLocaleNames, locale);
}

VRDConfigurationImpl::TextMap VRDConfigurationImpl::getTimeZones(const I18NString& locale) {
  return namesOf(timeZoneNames, locale);
}

VRDConfigurationImpl::TextMap VRDConfigurationImpl::getCurrencies(const I18NString& locale) {
  return namesOf(currencyNames, locale);
}
