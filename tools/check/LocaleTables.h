#pragma once

#include <string_view>

#include "service/LocaleTableSources.h"

/// What the codes of a table are: those of a list, the keys of a map.
enum class TableCodes { Locales, LocalePatterns, Names };

/// A table of the service, as a section of the locale document or a parameter may fill it.
struct LocaleTable {
  const LocaleTableSource& source;
  bool isMap;
  TableCodes codes;
};

// clang-format off
inline constexpr LocaleTable localeTables[] = {
    {LocaleTableSources::productLocales, false, TableCodes::Locales},
    {LocaleTableSources::productMapping, true,  TableCodes::LocalePatterns},
    {LocaleTableSources::contentLocales, false, TableCodes::Locales},
    {LocaleTableSources::contentMapping, true,  TableCodes::LocalePatterns},
    {LocaleTableSources::currencies,     false, TableCodes::Names},
    {LocaleTableSources::fonts,          false, TableCodes::Names},
    {LocaleTableSources::fontMappings,   true,  TableCodes::Names},
};
// clang-format on

/// The table that the section fills; null if it fills none.
inline const LocaleTable* tableOfSection(std::string_view name) {
  for (const LocaleTable& table : localeTables) {
    if (name == table.source.section) return &table;
  }
  return nullptr;
}

/// The table that the parameter replaces; null if it replaces none.
inline const LocaleTable* tableOfParameter(std::string_view name) {
  for (const LocaleTable& table : localeTables) {
    if (table.source.parameter != nullptr && name == table.source.parameter) return &table;
  }
  return nullptr;
}
