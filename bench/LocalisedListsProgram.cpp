// Localised lists: a repeated request beside the copy of a std::map of the same size, a first
// request for all time zones beside a loop of ICU's TimeZone::getDisplayName, and what many locales
// cost in memory.
//
//   bench_localised_lists

#include <unicode/locid.h>
#include <unicode/strenum.h>
#include <unicode/timezone.h>

#include <iterator>
#include <map>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/Measure.h"
#include "service/VRDConfigurationFactory.h"

namespace {

using Names = std::map<I18NString, I18NString>;

constexpr int rounds = 301;

/// Makes the first @p count locales that ICU knows the product locales of the object.
void giveCodes(IVRDConfiguration& service, int count) {
  std::string items;
  int available = 0;
  const icu::Locale* locales = icu::Locale::getAvailableLocales(available);
  for (int index = 0; index < count; ++index) {
    items += "<item>" + std::string(locales[index].getName()) + "</item>";
  }
  std::istringstream text(
      "<queryResult><group><supportedProductLocales opaque='true'><value>" + items +
      "</value></supportedProductLocales><productLocaleMap opaque='true'><value/>"
      "</productLocaleMap></group></queryResult>");
  IBJBufferedInputStream stream(text);
  service.init(stream);
}

template <class Ask>
PairOfTimes repeated(Ask ask) {
  const Names names = ask();
  // Enough for reading the clock not to count.
  constexpr int atATime = 50;
  std::size_t entries = 0;
  const PairOfTimes times = inTurn(
      rounds,
      [&] {
        for (int i = 0; i < atATime; ++i) entries += ask().size();
      },
      [&] {
        for (int i = 0; i < atATime; ++i) entries += Names(names).size();
      });
  if (entries != static_cast<std::size_t>(2 * rounds * atATime) * names.size())
    throw std::runtime_error("the lists differ in size");
  return {times.ours / atATime, times.peers / atATime};
}

std::vector<icu::UnicodeString> zoneIds() {
  std::vector<icu::UnicodeString> ids;
  const std::unique_ptr<icu::StringEnumeration> all(icu::TimeZone::createEnumeration());
  UErrorCode status = U_ZERO_ERROR;
  while (const icu::UnicodeString* id = all->snext(status)) ids.push_back(*id);
  return ids;
}

void plainNames(const std::vector<icu::UnicodeString>& ids, const char* locale) {
  const icu::Locale display(locale);
  for (const icu::UnicodeString& id : ids) {
    icu::UnicodeString name;
    const std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone(id));
    zone->getDisplayName(false, icu::TimeZone::LONG, display, name);
  }
}

/// ICU keeps what it has loaded for a locale, so each locale is new to one of the two only.
PairOfTimes firstTimeZones(IVRDConfiguration& service) {
  const char* const forOurs[] = {"fr", "es", "ru", "nl", "da", "fi", "cs", "ro", "el", "uk", "th"};
  const char* const forPeers[] = {"de", "it", "ja", "sv", "nb", "pl", "hu", "bg", "tr", "ko", "vi"};
  const std::vector<icu::UnicodeString> ids = zoneIds();
  service.getTimeZones("en");
  plainNames(ids, "en");
  std::vector<double> ours;
  std::vector<double> peers;
  for (std::size_t index = 0; index < std::size(forOurs); ++index) {
    ours.push_back(microseconds([&] { service.getTimeZones(forOurs[index]); }));
    peers.push_back(microseconds([&] { plainNames(ids, forPeers[index]); }));
  }
  return {median(ours), median(peers)};
}

/// What names of 30 locales and all time zones in 200 languages and regions cost, in KiB.
double cacheMemory(IVRDConfiguration& service) {
  int available = 0;
  const icu::Locale* locales = icu::Locale::getAvailableLocales(available);
  const double before = processMemory("VmRSS");
  std::map<std::string, int> asked;
  for (int index = 0; index < available && asked.size() < 200; ++index) {
    const I18NString locale = service.normalizeLocale(locales[index].getName());
    if (!asked.emplace(locale.c_str(), 1).second) continue;
    service.getProductLocaleList(locale);
    service.getTimeZones(locale);
  }
  return processMemory("VmRSS") - before;
}

}  // namespace

int main() {
  IVRDConfiguration& service = *VRDConfigurationFactory::createObject();
  giveCodes(service, 30);
  report("thirty", repeated([&] { return service.getProductLocaleList("en"); }));
  report("zones", repeated([&] { return service.getTimeZones("en"); }));
  report("first", firstTimeZones(service));
  report("growth", cacheMemory(service));
  VRDConfigurationFactory::releaseObject(&service);
}
