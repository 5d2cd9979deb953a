#pragma once

#include "service/VRDConfigurationImpl.h"

/// The locales of a product's surface, or those of its content: the same tables from other sources.
struct VRDConfigurationImpl::LocaleFamily {
  ServiceTable<TextList> VRDConfigurationImpl::*supported;
  ServiceTable<TextMap> VRDConfigurationImpl::*mapping;
  ServiceTable<NameCache> VRDConfigurationImpl::*names;
  VRDThreadCriticalSection VRDConfigurationImpl::*mutex;
  const LocaleTableSource& supportedSource;
  const LocaleTableSource& mappingSource;
  int serverLocaleLength;  ///< How much of the server locale stands in for a locale without a
                           ///< mapping: its language, or its language and region.
};

inline constexpr VRDConfigurationImpl::LocaleFamily VRDConfigurationImpl::productFamily{
    &VRDConfigurationImpl::m_productLocales,
    &VRDConfigurationImpl::m_productLocaleMapping,
    &VRDConfigurationImpl::m_productLocalesMap,
    &VRDConfigurationImpl::m_productLocaleMutex,
    LocaleTableSources::productLocales,
    LocaleTableSources::productMapping,
    2};

inline constexpr VRDConfigurationImpl::LocaleFamily VRDConfigurationImpl::contentFamily{
    &VRDConfigurationImpl::m_contentLocales,
    &VRDConfigurationImpl::m_contentLocaleMapping,
    &VRDConfigurationImpl::m_contentLocalesMap,
    &VRDConfigurationImpl::m_contentLocaleMutex,
    LocaleTableSources::contentLocales,
    LocaleTableSources::contentMapping,
    5};
