#include "service/ComponentVersions.h"

#include <algorithm>
#include <cstring>
#include <functional>

#include "service/ComponentMarker.h"

namespace {

constexpr std::size_t blockSize = std::size_t{1} << 13;
constexpr std::streamsize largestReserve = std::streamsize{1} << 28;
constexpr std::size_t shortestEntry = componentMarker.size() + 1;

// The bits above tell most other names from the one that is looked for without a look at the text.
constexpr std::uint64_t placeMask = (std::uint64_t{1} << 40) - 1;

std::size_t hashOf(std::string_view name) { return std::hash<std::string_view>()(name); }

std::uint64_t tagOf(std::uint64_t slotOrHash) { return slotOrHash & ~placeMask; }

std::size_t placeOf(std::uint64_t slot) { return (slot & placeMask) - 1; }

/// At least one stays free, which ends every search.
std::size_t slotsFor(std::size_t entries) {
  std::size_t slots = 1;
  while (slots < 2 * entries) slots *= 2;
  return slots;
}

/// What is left of a file that is not too large to make room for at once.
std::size_t likelySize(std::istream& list) {
  const std::streamsize available = list.rdbuf()->in_avail();
  return static_cast<std::size_t>(std::clamp<std::streamsize>(available, 0, largestReserve));
}

/// Appends what the buffer of @p list holds, filled again if it is empty. A read of more than that
/// would lose, where it fails, what it has read until then.
/// @return how much that is; 0 at the end
template <class Text>
std::size_t appendBlock(std::istream& list, Text& text) {
  if (list.peek() == std::istream::traits_type::eof()) return 0;
  const std::size_t before = text.size();
  text.resize(before + blockSize);
  const auto count = static_cast<std::size_t>(list.readsome(&text[before], blockSize));
  text.resize(before + count);
  return count;
}

}  // namespace

// In place, and not with std::getline, which copies every line. There is room for the most that is
// likely to come, since moving a long list costs more than room that is not used.
void ComponentVersions::read(std::istream& list) {
  const std::size_t likely = likelySize(list);
  Large<Entry> entries;
  entries.reserve(likely / shortestEntry);
  m_text.reserve(likely + blockSize);
  std::size_t kept = 0;
  while (const std::size_t count = appendBlock(list, m_text)) {
    kept = keepEntries(kept, m_text.size() - count, entries);
  }
  m_text.resize(kept);
  index(entries);
}

/// Keeps, of the lines that begin at @p kept, the entries, and the last one if its end is still to
/// come. What stands before @p unread is known to hold no newline.
/// @return where that last line begins
std::size_t ComponentVersions::keepEntries(std::size_t kept, std::size_t unread,
                                           Large<Entry>& entries) {
  std::size_t begin = kept;
  for (std::size_t end = m_text.find('\n', unread); end != std::string::npos;
       end = m_text.find('\n', begin)) {
    const std::string_view line = textAt(begin).substr(0, end + 1 - begin);
    const std::size_t marker = findComponentMarker(line);
    if (marker != std::string_view::npos) {
      entries.push_back({hashOf(line.substr(0, marker)), kept});
      if (kept != begin) std::memmove(&m_text[kept], line.data(), line.size());
      kept += line.size();
    }
    begin = end + 1;
  }
  m_text.erase(kept, begin - kept);
  return kept;
}

// The slots lie far apart, so each is asked for some entries ahead of its turn.
void ComponentVersions::index(const Large<Entry>& entries) {
  constexpr std::size_t ahead = 32;
  m_slots.assign(slotsFor(entries.size()), 0);
  for (std::size_t next = 0; next < entries.size() + ahead; ++next) {
    if (next < entries.size()) __builtin_prefetch(&m_slots[firstSlotOf(entries[next].hash)], 1);
    if (next >= ahead) insert(entries[next - ahead]);
  }
}

/// Unless an entry before it has its name.
void ComponentVersions::insert(const Entry& entry) {
  const std::size_t at = slotOf(entry.hash, [&](std::size_t place) {
    const std::string_view text = textAt(entry.place);
    return hasName(place, text.substr(0, findComponentMarker(text)));
  });
  if (m_slots[at] != 0) return;
  m_slots[at] = tagOf(entry.hash) | (entry.place + 1);
  ++m_size;
}

std::optional<std::string_view> ComponentVersions::find(std::string_view name) const {
  if (m_slots.empty() || findComponentMarker(name) != std::string_view::npos) return std::nullopt;
  const auto isIts = [&](std::size_t place) { return hasName(place, name); };
  const Slot slot = m_slots[slotOf(hashOf(name), isIts)];
  if (slot == 0) return std::nullopt;
  const std::string_view version =
      textAt(placeOf(slot)).substr(name.size() + componentMarker.size());
  return version.substr(0, version.find('\n'));
}

std::string_view ComponentVersions::textAt(std::size_t place) const {
  return std::string_view(m_text).substr(place);
}

/// Whether @p name, which holds no marker, is that of the entry at @p place.
bool ComponentVersions::hasName(std::size_t place, std::string_view name) const {
  const std::string_view text = textAt(place);
  return text.substr(0, name.size()) == name &&
         text.substr(name.size(), componentMarker.size()) == componentMarker;
}

/// The slot of the name with @p hash, whose entry @p isIts knows by its place, or the free one
/// where it belongs.
template <class IsIts>
std::size_t ComponentVersions::slotOf(std::size_t hash, IsIts isIts) const {
  std::size_t at = firstSlotOf(hash);
  while (m_slots[at] != 0) {
    if (tagOf(m_slots[at]) == tagOf(hash) && isIts(placeOf(m_slots[at]))) break;
    at = (at + 1) & (m_slots.size() - 1);
  }
  return at;
}
