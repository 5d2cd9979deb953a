#include "platform/core/LocaleServices.h"

#include <unicode/uloc.h>
#include <unicode/ures.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

#include "platform/core/Ascii.h"
#include "platform/core/IcuText.h"

namespace {

/// What ICU's own buffers for names hold.
constexpr std::size_t longestName = ULOC_FULLNAME_CAPACITY - 1;

/// Not `icu::Locale::getRoot`, nor any other of those: they give a reference to nothing for ever
/// after a first call that found no memory.
icu::Locale rootLocale() { return icu::Locale(""); }

/// Whether ICU can be asked about the name. Others would be taken for paths of resource files.
bool isLocaleName(std::string_view name) {
  return name.size() <= longestName && std::all_of(name.begin(), name.end(), [](char ch) {
           return isAsciiAlphanumeric(ch) || std::strchr("_-@=;.", ch) != nullptr;
         });
}

/// ICU asks for its default locale wherever it opens data. Without memory to make that, it reads
/// through a null pointer or waits for a lock that it holds.
void requireDefaultLocale() {
  static const icu::Locale& made =
      withIcuReserve([]() -> const icu::Locale& { return icu::Locale::getDefault(); });
  static_cast<void>(made);
}

/// ICU shows an unknown language in that of the process. So what a server answers would depend on
/// who started it; opening the resources is the one way to be told beforehand.
bool hasDisplayNames(const icu::Locale& locale) {
  UErrorCode status = U_ZERO_ERROR;
  ures_close(ures_open(nullptr, locale.getName(), &status));
  return hasSucceeded(status) && status != U_USING_DEFAULT_WARNING;
}

/// In Turkish and Azerbaijani "I" is the capital of a dotless letter, and "i" has a dotted capital.
bool hasOwnI(const icu::Locale& locale) {
  return std::strcmp(locale.getLanguage(), "tr") == 0 ||
         std::strcmp(locale.getLanguage(), "az") == 0;
}

/// What `icu::Locale::getDisplayName` gives; that keeps silent about want of memory.
std::u16string displayName(const icu::Locale& locale, const icu::Locale& display) {
  std::u16string name(longestName, u'\0');
  UErrorCode status = U_BUFFER_OVERFLOW_ERROR;
  while (status == U_BUFFER_OVERFLOW_ERROR) {
    const auto room = static_cast<int32_t>(name.size());
    int32_t length = 0;
    status = askIcu([&](UErrorCode& error) {
      length = uloc_getDisplayName(locale.getName(), display.getName(), name.data(), room, &error);
    });
    name.resize(static_cast<std::size_t>(length));
  }
  if (!hasSucceeded(status)) name.clear();
  return name;
}

/// Null for any failure but want of memory: that passes, so it is thrown and not kept.
template <class Service>
std::unique_ptr<const Service> makeService(Service* (*create)(const icu::Locale&, UErrorCode&),
                                           const icu::Locale& locale) {
  UErrorCode status = U_ZERO_ERROR;
  // The one for formats reads through a null pointer where it found no memory.
  std::unique_ptr<const Service> service(withIcuReserve([&] { return create(locale, status); }));
  if (!hasSucceeded(status)) service.reset();
  return service;
}

}  // namespace

LocaleServices::LocaleServices() : m_known(false), m_locale(rootLocale()) {}

LocaleServices::LocaleServices(const char* name)
    : m_name(name),
      m_known(isLocaleName(m_name)),
      m_locale(m_known ? icu::Locale(name) : rootLocale()) {
  if (m_locale.isBogus()) {
    m_known = false;
    m_locale = rootLocale();
  }
  m_commonI = !hasOwnI(m_locale);
}

// Never destroyed: an exit handler may still compare names.
const std::shared_ptr<const LocaleServices>& LocaleServices::ofDefault() {
  static const auto& services =
      *new const std::shared_ptr<const LocaleServices>(std::make_shared<LocaleServices>());
  return services;
}

I18NString LocaleServices::nameIn(const LocaleServices& display) const {
  // The name as given tells a person more than the "Unknown language" that the root would show.
  if (!m_known) return I18NString(m_name);
  return I18NString::fromUtf16(displayName(m_locale, display.displayLocale()));
}

// What follows is made when it is first asked for. Most locales are only ever a code whose name is
// wanted, and the three cost from some microseconds to some milliseconds.

const icu::Locale& LocaleServices::displayLocale() const {
  std::call_once(m_displayLocaleOnce, [this] {
    requireDefaultLocale();
    const bool shown = m_known && hasDisplayNames(m_locale);
    m_displayLocale = shown ? m_locale : icu::Locale("en");
  });
  return m_displayLocale;
}

const icu::TimeZoneNames* LocaleServices::timeZoneNames() const {
  std::call_once(m_timeZoneNamesOnce, [this] {
    m_timeZoneNames = makeService(icu::TimeZoneNames::createInstance, displayLocale());
  });
  return m_timeZoneNames.get();
}

const icu::TimeZoneFormat* LocaleServices::timeZoneFormat() const {
  std::call_once(m_timeZoneFormatOnce, [this] {
    m_timeZoneFormat = makeService(icu::TimeZoneFormat::createInstance, displayLocale());
  });
  return m_timeZoneFormat.get();
}
