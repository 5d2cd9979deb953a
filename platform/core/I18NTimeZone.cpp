#include "platform/core/I18NTimeZone.h"

#include <unicode/calendar.h>
#include <unicode/timezone.h>

#include <memory>
#include <new>
#include <vector>

#include "platform/core/IcuText.h"
#include "platform/core/LocaleServices.h"

namespace {

// ICU's `TimeZone::getDisplayName` gives the same texts in the other order: it looks for the zone's
// own name before that of its group, and looks up every service of the locale anew for each zone.
// Hardly a zone has a name of its own, and none that has one is in a group, so finding that out for
// every zone is most of the work, and nothing is lost by asking the group first.

/// "Central European Standard Time" is the name of the group that Paris is in at present.
icu::UnicodeString groupName(const icu::UnicodeString& id, const icu::TimeZoneNames& names) {
  icu::UnicodeString group;
  icu::UnicodeString name;
  names.getMetaZoneID(id, icu::Calendar::getNow(), group);
  if (!group.isEmpty()) names.getMetaZoneDisplayName(group, UTZNM_LONG_STANDARD, name);
  return name;
}

/// "Coordinated Universal Time".
icu::UnicodeString ownName(const icu::UnicodeString& id, const icu::TimeZoneNames& names) {
  icu::UnicodeString canonicalId;
  icu::UnicodeString name;
  UErrorCode status = U_ZERO_ERROR;
  icu::TimeZone::getCanonicalID(id, canonicalId, status);
  if (hasSucceeded(status)) names.getTimeZoneDisplayName(canonicalId, UTZNM_LONG_STANDARD, name);
  return name;
}

// ICU says that there is nothing also, without a word, where it had no memory to look. So that
// answer counts when it comes twice.

template <class Ask>
icu::UnicodeString nameBy(Ask ask, const icu::UnicodeString& id, const icu::TimeZoneNames& names) {
  icu::UnicodeString name = ask(id, names);
  if (name.isEmpty()) name = ask(id, names);
  return name;
}

bool isUnknown(const icu::TimeZone& zone) {
  icu::UnicodeString id;
  return zone.getID(id) == icu::UnicodeString(true, u"Etc/Unknown", -1);
}

/// Of an id that nobody knows ICU makes GMT, as the unknown zone.
std::unique_ptr<icu::TimeZone> zoneOf(const icu::UnicodeString& id) {
  std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone(id));
  if (zone && isUnknown(*zone)) zone.reset(icu::TimeZone::createTimeZone(id));
  if (!zone) throw std::bad_alloc();
  return zone;
}

/// "GMT-03:00", for a zone that has no name in the language.
icu::UnicodeString offsetText(const icu::UnicodeString& id, const icu::TimeZoneFormat* format) {
  icu::UnicodeString text;
  UErrorCode status = U_ZERO_ERROR;
  if (format != nullptr) {
    // Without daylight saving, as names are those of standard time.
    format->formatOffsetLocalizedGMT(zoneOf(id)->getRawOffset(), text, status);
  }
  return text;
}

std::vector<I18NTimeZone> makeAvailable() {
  std::vector<I18NTimeZone> zones;
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<icu::StringEnumeration> ids(icu::TimeZone::createEnumeration(status));
  while (const icu::UnicodeString* id = hasSucceeded(status) ? ids->snext(status) : nullptr) {
    zones.emplace_back(fromIcu(*id));
  }
  return zones;
}

}  // namespace

I18NTimeZone::I18NTimeZone(const I18NString& id) : m_id(id) {}

// Never freed, since callers hold its address for as long as they like.
const I18NTimeZone* I18NTimeZone::getAvailableTimeZones(int& count) {
  static const auto& zones = *new const std::vector<I18NTimeZone>(makeAvailable());
  count = static_cast<int>(zones.size());
  return zones.data();
}

void I18NTimeZone::getID(I18NString& out) const { out = m_id; }

void I18NTimeZone::getDisplayName(I18NString& out, const I18NLocale& inLocale) const {
  const LocaleServices& services = *inLocale.m_services;
  const icu::UnicodeString id = toIcu(m_id);
  const icu::TimeZoneNames* names = services.timeZoneNames();
  icu::UnicodeString name;
  if (names != nullptr) name = nameBy(groupName, id, *names);
  if (names != nullptr && name.isEmpty()) name = nameBy(ownName, id, *names);
  if (name.isEmpty()) name = offsetText(id, services.timeZoneFormat());
  out = fromIcu(name);
}
