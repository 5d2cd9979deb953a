// Unit VRDConfigurationImpl: normalising, validating and mapping locales.

#include <algorithm>
#include <atomic>
#include <optional>
#include <string_view>

#include "foundation/ConfigurationMessages.h"
#include "foundation/VRDConfigurationException.h"
#include "platform/core/Ascii.h"
#include "platform/core/VRDGuardedAllocation.h"
#include "service/LocaleFamily.h"
#include "service/VRDConfigurationImpl.h"

#define VRD_SOURCE_UNIT "VRDConfigurationImpl"

namespace {

VRDThreadCriticalSection g_mutexLocale(0);
std::atomic<I18NLocale*> g_defLocale{nullptr};

constexpr int canonicalLength = 5;

/// Locale codes that were replaced long ago and still come in.
constexpr struct {
  const char* old;
  const char* current;
} renamedLocales[] = {{"in", "id"}, {"in-id", "id-id"}, {"iw", "he"}, {"iw-il", "he-il"}};

bool isLowerPair(std::string_view text) {
  return text.size() == 2 && std::all_of(text.begin(), text.end(), isAsciiLower);
}

I18NString currentCode(const I18NString& locale) {
  const I18NLocale comparison(nullptr);
  for (const auto& renamed : renamedLocales) {
    if (comparison.compareIgnoreCase(locale, renamed.old) == 0) return renamed.current;
  }
  return locale;
}

// The locale to use for another, from the closest to the widest:
//   1. the entry of the locale itself
//   2. where it has no "-", the entry of the whole as a pattern: "fr-*" for "fr"
//   3. the entry of its language as a pattern: "en-*" for "en-ca"
//   4. the entry "*"
//   5. the server locale, as much of it as the family takes; it needs no entry
//   6. none: an exception
// A text too short to be a locale has none from the start, whatever entries there are.

/// Steps 1 to 4.
std::optional<I18NString> findMapping(const VRDConfigurationImpl::TextMap& mapping,
                                      I18NString locale) {
  const auto find = [&](const I18NString& key) -> std::optional<I18NString> {
    const auto entry = mapping.find(key);
    return entry == mapping.end() ? std::nullopt : std::optional(entry->second);
  };
  // 1. The locale itself.
  if (auto found = find(locale)) return found;
  // 2. The whole as a pattern.
  if (locale.find(L'-', 0) < 0) {
    locale += "-*";
    if (auto found = find(locale)) return found;
  }
  // 3. The language as a pattern: for a bare language the key of step 2 once more.
  if (auto found = find(locale.substr(0, 3) + "*")) return found;
  // 4. Everything.
  return find("*");
}

[[noreturn]] void raiseUnmapped(const I18NString& locale) {
  VRDMessage message(configurationCatalogue, configurationMessage(VRDCFGAPI_LocaleUnmapped));
  message << VRDMessageParm(locale);
  throw VRDConfigurationException(VRDSeverity_Error, VRDCFGAPI_LocaleUnmapped, message);
}

}  // namespace

I18NLocale* getI18NLocale() {
  I18NLocale* locale = g_defLocale.load(std::memory_order_acquire);
  if (locale != nullptr) return locale;
  VRDThreadGuard guard(g_mutexLocale);
  locale = g_defLocale.load(std::memory_order_relaxed);
  if (locale == nullptr) {
    locale = VRD_GUARDED_NEW(I18NLocale, nullptr);
    g_defLocale.store(locale, std::memory_order_release);
  }
  return locale;
}

// The order of the steps shows in the results: the cut comes before "_" is looked for.
void VRDConfigurationImpl::normalizeLocaleHelper(I18NString& locale) {
  locale.trim(L' ');
  locale.erase(canonicalLength, -1);
  for (int at = locale.find(L'_', 0); at >= 0; at = locale.find(L'_', at)) {
    locale.replace(at, 1, L'-', 1);
  }
  getI18NLocale()->toLower(locale);
}

int VRDConfigurationImpl::validateLocaleHelper(const I18NString& locale) {
  const std::string_view text = locale.utf8();
  if (text.size() == 2) return isLowerPair(text) ? 1 : 0;
  if (text.size() != canonicalLength) return 0;
  return isLowerPair(text.substr(0, 2)) && text[2] == '-' && isLowerPair(text.substr(3)) ? 1 : 0;
}

int VRDConfigurationImpl::containsLocale(const TextList* locales, const I18NString& locale) {
  return std::find(locales->begin(), locales->end(), locale) != locales->end() ? 1 : 0;
}

I18NString VRDConfigurationImpl::normalizeLocale(const I18NString& locale) {
  I18NString canonical = locale;
  normalizeLocaleHelper(canonical);
  return canonical;
}

/// A malformed locale is refused before any table is touched.
int VRDConfigurationImpl::validateLocale(const LocaleFamily& family, const I18NString& locale) {
  if (validateLocaleHelper(locale) == 0) return 0;
  initializeLocaleMaps(family);
  const I18NString code = currentCode(locale);
  return (this->*family.supported).read([&](const TextList& supported) {
    return containsLocale(&supported, code);
  });
}

I18NString VRDConfigurationImpl::mapLocale(const LocaleFamily& family, const I18NString& locale,
                                           int normalize) {
  initializeLocaleMaps(family);
  const I18NString key = normalize != 0 ? normalizeLocale(locale) : locale;
  if (key.size() < 2) raiseUnmapped(locale);

  const auto mapped = (this->*family.mapping).read([&](const TextMap& mapping) {
    return findMapping(mapping, key);
  });
  if (mapped) return *mapped;

  // 5. The server locale.
  const int decrypt = 1;
  I18NString serverLocale = getValue("serverLocale", decrypt);
  normalizeLocaleHelper(serverLocale);
  // 6. None. The message names the locale as the caller wrote it, not as it was looked up.
  if (serverLocale.length() < 2) raiseUnmapped(locale);
  return serverLocale.substr(0, family.serverLocaleLength);
}

int VRDConfigurationImpl::validateProductLocale(const I18NString& locale) {
  return validateLocale(productFamily, locale);
}

int VRDConfigurationImpl::validateContentLocale(const I18NString& locale) {
  return validateLocale(contentFamily, locale);
}

I18NString VRDConfigurationImpl::mapProductLocale(const I18NString& locale, int normalize) {
  return mapLocale(productFamily, locale, normalize);
}

I18NString VRDConfigurationImpl::mapContentLocale(const I18NString& locale, int normalize) {
  return mapLocale(contentFamily, locale, normalize);
}
