#include "service/ComponentVersions.h"

#include <functional>

namespace {

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

}  // namespace

void ComponentVersions::add(std::string_view name, std::string_view version) {
  m_entries.push_back({hashOf(name), m_text.size()});
  m_text.append(name).push_back('\n');
  m_text.append(version).push_back('\n');
}

// The slots lie far apart, so each is asked for some entries ahead of its turn.
void ComponentVersions::complete() {
  constexpr std::size_t ahead = 16;
  m_slots.assign(slotsFor(m_entries.size()), 0);
  for (std::size_t next = 0; next < m_entries.size() + ahead; ++next) {
    if (next < m_entries.size()) __builtin_prefetch(&m_slots[firstSlotOf(m_entries[next].hash)], 1);
    if (next >= ahead) insert(m_entries[next - ahead]);
  }
}

/// Unless an entry before it has its name.
void ComponentVersions::insert(const Entry& entry) {
  std::size_t at = firstSlotOf(entry.hash);
  if (m_slots[at] != 0) at = slotOf(lineAt(entry.place), entry.hash);
  if (m_slots[at] == 0) m_slots[at] = tagOf(entry.hash) | (entry.place + 1);
}

std::optional<std::string_view> ComponentVersions::find(std::string_view name) const {
  if (m_slots.empty()) return std::nullopt;
  const Slot slot = m_slots[slotOf(name, hashOf(name))];
  if (slot == 0) return std::nullopt;
  return lineAt(placeOf(slot) + name.size() + 1);
}

std::string_view ComponentVersions::lineAt(std::size_t begin) const {
  const std::string_view rest = std::string_view(m_text).substr(begin);
  return rest.substr(0, rest.find('\n'));
}

/// The slot of @p name, or the free one where it belongs.
std::size_t ComponentVersions::slotOf(std::string_view name, std::size_t hash) const {
  std::size_t at = firstSlotOf(hash);
  while (m_slots[at] != 0) {
    if (tagOf(m_slots[at]) == tagOf(hash) && lineAt(placeOf(m_slots[at])) == name) break;
    at = (at + 1) & (m_slots.size() - 1);
  }
  return at;
}
