#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "service/LargePages.h"

/// The versions of a component list, by component name, both in the bytes of the file.
///
/// A list may have millions of entries and is asked for a few, so what counts is how fast it fills:
/// its lines stay as they are in one text, and a table of hashes leads to them. The text holds a
/// TiB at most.
///
/// Safe to read from many threads once it is filled.
class ComponentVersions {
 public:
  /// Takes in the entries of @p list, a stream with a buffer; once for each object. Of several with
  /// one name the first counts. A last line without a newline is not read: it may be the half of
  /// one that is still being written. Where the stream fails, the list ends.
  void read(std::istream& list);

  /// @return the version of @p name, which this object owns; nothing if no entry has that name,
  ///         compared byte for byte
  std::optional<std::string_view> find(std::string_view name) const;

  /// The number of names.
  std::size_t size() const { return m_size; }

 private:
  template <class Element>
  using Large = std::vector<Element, LargePages<Element>>;

  struct Entry {
    std::size_t hash;   // of its name
    std::size_t place;  // where its line begins in the text
  };
  /// 0, or the place of an entry, counted from 1, below some bits of its hash.
  using Slot = std::uint64_t;

  std::size_t keepEntries(std::size_t kept, std::size_t unread, Large<Entry>& entries);
  void index(const Large<Entry>& entries);
  void insert(const Entry& entry);
  std::string_view textAt(std::size_t place) const;
  bool hasName(std::size_t place, std::string_view name) const;
  std::size_t firstSlotOf(std::size_t hash) const { return hash & (m_slots.size() - 1); }
  template <class IsIts>
  std::size_t slotOf(std::size_t hash, IsIts isIts) const;

  std::basic_string<char, std::char_traits<char>, LargePages<char>> m_text;  // the lines of entries
  Large<Slot> m_slots;  // a power of two of them, never more than half in use
  std::size_t m_size = 0;
};
