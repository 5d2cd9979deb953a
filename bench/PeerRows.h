#pragma once

#include <filesystem>

#include "bench/Table.h"

/// Sets the library beside other configuration libraries at the same work: cold load, lookup behind
/// a lock, whole text, 100 changed values. A peer that was not built gets no rows.
/// @param rounds of a load; a tenth of them, at least one, where a load takes seconds
void addPeerRows(Table& table, const std::filesystem::path& folder, int rounds);

/// Prints what a cold load costs from 100 to 1,000,000 parameters, in microseconds: a line for each
/// size, a column for the library, the bare parse and each peer. A peer that took more than
/// two seconds gets "?" for the greater sizes.
void printCurve(const std::filesystem::path& folder);
