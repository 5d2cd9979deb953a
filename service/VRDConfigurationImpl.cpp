#include "service/VRDConfigurationImpl.h"

#include "service/RaiseUnlessDone.h"
#include "store/VRDConfiguration.h"

namespace {

template <class... Tables>
void freeInOrder(Tables&... tables) {
  (tables.free(), ...);
}

}  // namespace

VRDConfigurationImpl::VRDConfigurationImpl()
    : m_productLocaleMutex(0),
      m_contentLocaleMutex(0),
      m_timeZoneMutex(0),
      m_currencyMutex(0),
      m_fontMutex(0),
      m_componentMutex(0) {}

VRDConfigurationImpl::~VRDConfigurationImpl() {
  freeInOrder(m_productLocales, m_productLocaleMapping, m_productLocalesMap, m_contentLocales,
              m_contentLocaleMapping, m_contentLocalesMap, m_timeZones, m_timeZonesMap,
              m_currencies, m_currenciesMap, m_fonts, m_fontMappings, m_componentMap, m_localeDoc);
}

void VRDConfigurationImpl::init() { raiseUnlessDone(VRDConfiguration::getInstance()->init()); }

void VRDConfigurationImpl::init(IBJBufferedInputStream& stream) {
  raiseUnlessDone(VRDConfiguration::getInstance()->init(stream));
  reloadGlobalConfiguration();
}

void VRDConfigurationImpl::init(VRDIDOM_Element& element) {
  raiseUnlessDone(VRDConfiguration::getInstance()->init(element));
  reloadGlobalConfiguration();
}

// Time zones and component versions come from no parameter.
void VRDConfigurationImpl::reloadGlobalConfiguration() {
  reloadProductLocales();
  reloadContentLocales();
  reloadCurrencies();
  reloadFonts();
}
