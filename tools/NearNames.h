#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The number of characters to insert, delete, change or swap with their neighbour to get from one
/// text to the other. ASCII letters count as equal whatever their case.
int editDistance(std::string_view left, std::string_view right);

/// Those of @p names that @p name may have been meant to be, the nearest first, three at most.
std::vector<std::string> nearNames(std::string_view name, const std::vector<std::string>& names);

/// ` Near it: "a", "b".`, or nothing; the end of a message about a name that is not there.
std::string didYouMean(std::string_view name, const std::vector<std::string>& names);
