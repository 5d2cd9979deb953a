#pragma once

#include <string_view>

/// What a line of a component list says: it is an entry if it holds the marker. Its name stands
/// before the first one, its version behind it, both as they are.
inline constexpr std::string_view componentMarker = "_version=";

/// @return where the first marker in @p text begins; npos if there is none
std::size_t findComponentMarker(std::string_view text);
