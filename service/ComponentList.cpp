#include "service/ComponentList.h"

#include <algorithm>
#include <functional>
#include <string>
#include <string_view>

namespace {

constexpr std::string_view marker = "_version=";
constexpr std::size_t blockSize = std::size_t{1} << 16;
constexpr std::streamsize largestReserve = std::streamsize{1} << 26;

std::size_t searchMarker(std::string_view line) {
  static const std::boyer_moore_horspool_searcher searcher(marker.begin(), marker.end());
  const auto at = std::search(line.begin(), line.end(), searcher);
  return at == line.end() ? std::string_view::npos : static_cast<std::size_t>(at - line.begin());
}

/// Most entries have one '=' and most other lines none; only what has more is searched.
std::size_t findMarker(std::string_view line) {
  const std::size_t sign = line.find('=');
  if (sign == std::string_view::npos) return sign;
  const std::size_t at = sign + 1 - marker.size();
  if (sign + 1 >= marker.size() && line.substr(at, marker.size()) == marker) return at;
  return searchMarker(line);
}

void takeLine(std::string_view line, ComponentVersions& versions) {
  const std::size_t at = findMarker(line);
  if (at == std::string_view::npos) return;
  versions.add(line.substr(0, at), line.substr(at + marker.size()));
}

/// Takes the lines that end in @p block. The first of them began with @p pending, and what is left
/// behind the last of them is pending then.
void takeLines(std::string_view block, std::string& pending, ComponentVersions& versions) {
  for (std::size_t end = block.find('\n'); end != std::string_view::npos; end = block.find('\n')) {
    if (pending.empty()) {
      takeLine(block.substr(0, end), versions);
    } else {
      takeLine(pending.append(block, 0, end), versions);
      pending.clear();
    }
    block.remove_prefix(end + 1);
  }
  pending.append(block);
}

/// What is left of a file that is not too large to make room for at once.
std::size_t likelySize(std::istream& list) {
  const std::streamsize available = list.rdbuf()->in_avail();
  return static_cast<std::size_t>(std::clamp<std::streamsize>(available, 0, largestReserve));
}

/// What the buffer of @p list holds, filled again if it is empty. A read of more than that would
/// lose, where it fails, what it has read until then.
std::string_view nextBlock(std::istream& list, std::string& block) {
  if (list.peek() == std::istream::traits_type::eof()) return {};
  const auto count = list.readsome(block.data(), static_cast<std::streamsize>(block.size()));
  return std::string_view(block).substr(0, static_cast<std::size_t>(count));
}

}  // namespace

// In blocks, and not with std::getline, which copies every line: a long list is read in half the
// time.
void readComponentList(std::istream& list, ComponentVersions& versions) {
  std::string buffer(blockSize, '\0');
  std::string pending;
  versions.reserve(likelySize(list));
  for (auto block = nextBlock(list, buffer); !block.empty(); block = nextBlock(list, buffer)) {
    takeLines(block, pending, versions);
  }
  versions.complete();
}
