#pragma once

#include <climits>
#include <cstddef>
#include <stdexcept>

/// Positions are `int`, so a longer text could not be spoken of.
inline constexpr std::size_t greatestTextSize = INT_MAX;

inline void requireTextSize(std::size_t bytes) {
  if (bytes > greatestTextSize) throw std::length_error("I18NString: a text beyond INT_MAX bytes");
}

/// @p bytes as the `int` of the interface; throws as `requireTextSize` does.
inline int textSize(std::size_t bytes) {
  requireTextSize(bytes);
  return static_cast<int>(bytes);
}
