#include "service/ComponentMarker.h"

#include <algorithm>
#include <functional>

namespace {

std::size_t searchMarker(std::string_view text) {
  static const std::boyer_moore_horspool_searcher searcher(componentMarker.begin(),
                                                           componentMarker.end());
  const auto at = std::search(text.begin(), text.end(), searcher);
  return at == text.end() ? std::string_view::npos : static_cast<std::size_t>(at - text.begin());
}

}  // namespace

// Most entries have one '=' and most other lines none; only what has more is searched.
std::size_t findComponentMarker(std::string_view text) {
  const std::size_t sign = text.find('=');
  if (sign == std::string_view::npos) return sign;
  const std::size_t at = sign + 1 - componentMarker.size();
  if (sign + 1 >= componentMarker.size() &&
      text.substr(at, componentMarker.size()) == componentMarker) {
    return at;
  }
  return searchMarker(text);
}
