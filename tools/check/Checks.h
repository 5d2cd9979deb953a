#pragma once

#include <optional>

#include "tools/Installation.h"
#include "tools/LocatedDocument.h"
#include "tools/check/Finding.h"

struct LocaleTable;

// One check for each file of an installation. The list names the file; what is found goes into it.

void checkStartupDocument(const InstallationFile& file, FindingList& findings);
void checkLocaleDocument(const InstallationFile& file, FindingList& findings);
void checkComponentList(const InstallationFile& file, FindingList& findings);

/// @name Parts of the check of the startup document
/// @{

/// Path values that will not be resolved, and `xsi:type`s that are nearly a known one.
void checkTypes(const LocatedElement& parameter, FindingList& findings);
/// Marks that have no effect where or as they stand.
void checkMarks(const LocatedElement& parameter, FindingList& findings);
/// The list or map in the value of a parameter that replaces @p table.
void checkTable(const LocaleTable& table, const LocatedElement& value, FindingList& findings);
/// Whether the stored texts of encrypted values can be read, as far as that can be told: by the
/// provider, where there is one.
void checkProtectedValues(const LocatedElement& root, FindingList& findings);
/// @}

/// The content of the file; nothing if it cannot be had, which is then a finding.
std::optional<std::string> readForCheck(const InstallationFile& file, FindingList& findings);
/// The document in the file; nothing if it cannot be had or does not parse, which is a finding.
std::optional<LocatedDocument> parseForCheck(const InstallationFile& file, FindingList& findings);
