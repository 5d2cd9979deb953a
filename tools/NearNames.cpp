#include "tools/NearNames.h"

#include <algorithm>
#include <utility>

#include "platform/core/Ascii.h"
#include "tools/Text.h"

namespace {

constexpr std::size_t mostSuggestions = 3;

/// The characters of a text, so that a letter beyond ASCII counts as one.
std::vector<std::string> charactersOf(std::string_view text) {
  std::vector<std::string> characters;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t length = std::max<std::size_t>(1, characterLength(text, at));
    characters.emplace_back(text.substr(at, length));
    if (length == 1) characters.back()[0] = asciiLower(characters.back()[0]);
    at += length;
  }
  return characters;
}

using Characters = std::vector<std::string>;
using DistanceRow = std::vector<int>;

/// One row of the table of distances between the beginnings of two texts.
DistanceRow nextRow(const Characters& left, const Characters& right, std::size_t i,
                    const DistanceRow& beforeLast, const DistanceRow& last) {
  DistanceRow row(right.size() + 1);
  row[0] = static_cast<int>(i);
  for (std::size_t j = 1; j <= right.size(); ++j) {
    const int change = left[i - 1] == right[j - 1] ? 0 : 1;
    row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + change});
    if (i > 1 && j > 1 && left[i - 1] == right[j - 2] && left[i - 2] == right[j - 1]) {
      row[j] = std::min(row[j], beforeLast[j - 2] + 1);
    }
  }
  return row;
}

}  // namespace

// Only the last two rows of the table are kept; swapped neighbours look two rows back.
int editDistance(std::string_view left, std::string_view right) {
  const Characters from = charactersOf(left);
  const Characters to = charactersOf(right);
  DistanceRow beforeLast;
  DistanceRow last(to.size() + 1);
  for (std::size_t j = 0; j <= to.size(); ++j) last[j] = static_cast<int>(j);
  for (std::size_t i = 1; i <= from.size(); ++i) {
    DistanceRow row = nextRow(from, to, i, beforeLast, last);
    beforeLast = std::exchange(last, std::move(row));
  }
  return last.back();
}

// A third of the letters may be wrong: more would offer any short name for any other.
std::vector<std::string> nearNames(std::string_view name, const std::vector<std::string>& names) {
  const int most = std::max(1, static_cast<int>(charactersOf(name).size()) / 3);
  std::vector<std::pair<int, std::string>> near;
  for (const std::string& candidate : names) {
    const int distance = editDistance(name, candidate);
    if (distance <= most) near.emplace_back(distance, candidate);
  }
  std::sort(near.begin(), near.end());
  if (near.size() > mostSuggestions) near.resize(mostSuggestions);
  std::vector<std::string> result;
  for (auto& [distance, candidate] : near) result.push_back(std::move(candidate));
  return result;
}

std::string didYouMean(std::string_view name, const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& near : nearNames(name, names)) {
    text += (text.empty() ? " Near it: " : ", ") + inQuotes(near);
  }
  return text.empty() ? text : text + '.';
}
