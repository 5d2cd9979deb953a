// Unit VRDConfigurationImpl: how its tables come about and how parameters replace them.

#include "platform/core/I18NTimeZone.h"
#include "platform/core/VRDRaise.h"
#include "service/LocaleFamily.h"
#include "service/VRDConfigurationImpl.h"

#define VRD_SOURCE_UNIT "VRDConfigurationImpl"

namespace {

/// A cache begins empty; its names come when they are asked for.
constexpr auto nothing = [](auto&) {};

}  // namespace

template <class Content>
void VRDConfigurationImpl::makeFromDocument(ServiceTable<Content>& table,
                                            VRDThreadCriticalSection& lock,
                                            const LocaleTableSource& source) {
  table.makeOnce(lock, VRD_LOCATION, [&](Content& content) { load(content, source); });
}

/// @return whether the store knows the parameter; else the table stays as it is
template <class Content>
bool VRDConfigurationImpl::replaceFromParameter(ServiceTable<Content>& table,
                                                VRDThreadCriticalSection& lock,
                                                const LocaleTableSource& source) {
  const int decrypt = 0;
  VRDIDOM_Element value = getValueElement(source.parameter, decrypt);
  if (value.isNull()) return false;
  table.replace(lock, VRD_LOCATION, [&](Content& content) { loadFromParam(content, value); });
  return true;
}

void VRDConfigurationImpl::initializeLocaleMaps(const LocaleFamily& family) {
  VRDThreadCriticalSection& mutex = this->*family.mutex;
  makeFromDocument(this->*family.supported, mutex, family.supportedSource);
  makeFromDocument(this->*family.mapping, mutex, family.mappingSource);
  (this->*family.names).makeOnce(mutex, VRD_LOCATION, nothing);
}

/// Names were made for the codes of a list, so they go with it, by a step that cannot fail: names
/// of other codes must not outlive theirs. A mapping has none.
void VRDConfigurationImpl::reloadLocales(const LocaleFamily& family) {
  VRDThreadCriticalSection& mutex = this->*family.mutex;
  VRDThreadGuard guard(mutex);
  if (replaceFromParameter(this->*family.supported, mutex, family.supportedSource)) {
    (this->*family.names).clear(mutex);
  }
  replaceFromParameter(this->*family.mapping, mutex, family.mappingSource);
}

void VRDConfigurationImpl::initializeProductLocaleMaps() { initializeLocaleMaps(productFamily); }

void VRDConfigurationImpl::initializeContentLocaleMaps() { initializeLocaleMaps(contentFamily); }

void VRDConfigurationImpl::reloadProductLocales() { reloadLocales(productFamily); }

void VRDConfigurationImpl::reloadContentLocales() { reloadLocales(contentFamily); }

void VRDConfigurationImpl::initializeTimeZones() {
  m_timeZones.makeOnce(m_timeZoneMutex, VRD_LOCATION, [](TextList& ids) {
    int count = 0;
    const I18NTimeZone* zones = I18NTimeZone::getAvailableTimeZones(count);
    I18NString id;
    for (int index = 0; index < count; ++index) {
      zones[index].getID(id);
      ids.push_back(id);
    }
  });
  m_timeZonesMap.makeOnce(m_timeZoneMutex, VRD_LOCATION, nothing);
}

void VRDConfigurationImpl::initializeCurrencies() {
  makeFromDocument(m_currencies, m_currencyMutex, LocaleTableSources::currencies);
  m_currenciesMap.makeOnce(m_currencyMutex, VRD_LOCATION, nothing);
}

void VRDConfigurationImpl::reloadCurrencies() {
  VRDThreadGuard guard(m_currencyMutex);
  if (replaceFromParameter(m_currencies, m_currencyMutex, LocaleTableSources::currencies)) {
    m_currenciesMap.clear(m_currencyMutex);
  }
}

void VRDConfigurationImpl::initializeFonts() {
  makeFromDocument(m_fonts, m_fontMutex, LocaleTableSources::fonts);
  makeFromDocument(m_fontMappings, m_fontMutex, LocaleTableSources::fontMappings);
}

void VRDConfigurationImpl::reloadFonts() {
  VRDThreadGuard guard(m_fontMutex);
  replaceFromParameter(m_fonts, m_fontMutex, LocaleTableSources::fonts);
}
