#pragma once

/// Where the content of a table comes from.
struct LocaleTableSource {
  const char* section;    ///< The child of the locale document's root that holds it.
  const char* entry;      ///< The child of the section that is one entry.
  const char* parameter;  ///< The startup parameter that replaces it; null if none does.
};

/// The seven tables that the locale document fills. Those of lists read the attribute "id" of an
/// entry, those of maps "key" and "value".
namespace LocaleTableSources {

// clang-format off
inline constexpr LocaleTableSource productLocales{"supportedProductLocales", "locale",    "supportedProductLocales"};
inline constexpr LocaleTableSource productMapping{"productLocaleMap",        "localeMap", "productLocaleMap"};
inline constexpr LocaleTableSource contentLocales{"supportedContentLocales", "locale",    "supportedContentLocales"};
inline constexpr LocaleTableSource contentMapping{"contentLocaleMap",        "localeMap", "contentLocaleMap"};
inline constexpr LocaleTableSource currencies    {"supportedCurrencies",     "currency",  "supportedCurrencies"};
inline constexpr LocaleTableSource fonts         {"supportedFonts",          "font",      "supportedFonts"};
inline constexpr LocaleTableSource fontMappings  {"fontsMap",                "fontMap",   nullptr};
// clang-format on

}  // namespace LocaleTableSources
