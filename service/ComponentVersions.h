#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Component names with their versions, both in the bytes of the file.
///
/// A list may have millions of entries and is asked for a few, so what counts is how fast it fills:
/// all texts stand in one buffer, and a table of hashes made at the end leads to them. The buffer
/// holds a TiB at most.
///
/// Safe to read from many threads once it is complete.
class ComponentVersions {
 public:
  /// Makes room for @p bytes of names and versions.
  void reserve(std::size_t bytes) { m_text.reserve(bytes); }

  /// Adds an entry, which the next `complete` makes findable. Neither text may hold a newline.
  void add(std::string_view name, std::string_view version);

  /// Makes all entries findable. Of several with one name the first counts.
  void complete();

  /// @return the version of @p name, which this object owns; nothing if no entry has that name,
  ///         compared byte for byte
  std::optional<std::string_view> find(std::string_view name) const;

  /// The number of entries, with those that do not count.
  std::size_t size() const { return m_entries.size(); }

 private:
  struct Entry {
    std::size_t hash;
    std::size_t place;  // where its name begins in the text
  };
  /// 0, or the place of an entry, counted from 1, below some bits of its hash.
  using Slot = std::uint64_t;

  std::string_view lineAt(std::size_t begin) const;
  std::size_t firstSlotOf(std::size_t hash) const { return hash & (m_slots.size() - 1); }
  void insert(const Entry& entry);
  std::size_t slotOf(std::string_view name, std::size_t hash) const;

  std::string m_text;  // a line for each name, followed by one for its version
  std::deque<Entry> m_entries;
  std::vector<Slot> m_slots;  // a power of two of them, never more than half in use
};
