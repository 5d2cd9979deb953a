#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <numeric>
#include <set>

#include "tests/service/Service.h"

namespace {

using Text = const I18NString&;
using Service = IVRDConfiguration;

/// The place of a virtual operation in the table that compiled clients index, counted from 0.
template <class Operation>
std::uintptr_t slotOf(Operation operation) {
  std::uintptr_t words[2];
  static_assert(sizeof words == sizeof operation);
  std::memcpy(words, &operation, sizeof words);
  return words[0] / sizeof(void*);
}

template <class... Operations>
std::vector<std::uintptr_t> slotsOf(Operations... operations) {
  return {slotOf(operations)...};
}

}  // namespace

// Clients that were compiled long ago find the operations by their place.
TEST(ServiceInterface, OperationsStandInTheirOrder) {
  void (Service::*const init)() = &Service::init;
  void (Service::*const initFromStream)(IBJBufferedInputStream&) = &Service::init;
  void (Service::*const initFromElement)(VRDIDOM_Element&) = &Service::init;
  I18NString (Service::*const value)(Text, int) = &Service::getValue;
  I18NString (Service::*const noValue)(Text, int, int) = &Service::getValue;
  VRDIDOM_Element (Service::*const element)(Text, int) = &Service::getValueElement;
  VRDIDOM_Element (Service::*const noElement)(Text, int, int) = &Service::getValueElement;
  const auto slots = slotsOf(
      init, initFromStream, initFromElement, &Service::getParameterNames, value, element,
      &Service::getProductLocaleList, &Service::getContentLocaleList, &Service::getTimeZones,
      &Service::exportToCM, &Service::validateProductLocale, &Service::validateContentLocale,
      &Service::normalizeLocale, &Service::mapProductLocale, &Service::mapContentLocale,
      &Service::resolveEffectivePath, &Service::getCurrencies, &Service::getFonts,
      &Service::mapFont, &Service::getFontMappings, &Service::isInternalSSL,
      &Service::isExternalSSL, &Service::getComponentVersion, noValue, noElement);
  std::vector<std::uintptr_t> inOrder(25);
  std::iota(inOrder.begin(), inOrder.end(), std::uintptr_t{0});
  EXPECT_EQ(slots, inOrder);
}

TEST(ServiceFactory, SharesOneObjectAndGivesPrivateOnesWithoutAnInstallation) {
  const EnvironmentGuard execPath("ZAN_EXEC_PATH", "/no/such/folder");
  const EnvironmentGuard root("ZAN_ROOT", nullptr), libraryPath("LD_LIBRARY_PATH", nullptr);
  IVRDConfiguration* shared = VRDConfigurationFactory::getInstance();
  const PrivateService first, second;
  EXPECT_EQ((std::set<IVRDConfiguration*>{nullptr, shared, first.get(), second.get()}).size(), 4U);

  VRDConfigurationFactory::releaseObject(shared);
  VRDConfigurationFactory::releaseObject(nullptr);
  EXPECT_EQ(VRDConfigurationFactory::getInstance(), shared);
  EXPECT_EQ(shared->getTimeZones("en").at("Europe/Paris"), "Central European Standard Time");
}
