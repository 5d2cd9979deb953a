#pragma once

#include <xercesc/dom/DOMNode.hpp>

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>

/// The latest changes of the children of a document's nodes, for the live lists that have not seen
/// them yet. Changes of one parent that follow each other form a run; a certain number of runs is
/// kept, and the last changes of each. So a list of one parent can catch up after its children were
/// visited one by one, whatever was changed below each of them.
///
/// A change has the document to itself, readers share it: no lock is needed.
class ChangeJournal {
 public:
  enum class Kind : std::uint8_t { Appended, Inserted, Removed, Replaced };

  struct Change {
    Kind kind;
    xercesc::DOMNode* node;      ///< The child that was added, removed or replaced.
    xercesc::DOMNode* next;      ///< Removed: what followed it. Replaced: what stands there now.
    xercesc::DOMNode* previous;  ///< Removed: what stood before it, if nothing followed.
  };

  /// All changes so far.
  std::uint64_t count() const { return m_count; }

  /// Sees to it that `record` cannot fail. May throw `std::bad_alloc`.
  void prepare();
  void record(const xercesc::DOMNode& parent, const Change& change) noexcept;

  /// Shows @p visit the changes of @p parent 's children from number @p seen on, oldest first.
  /// @return false if some of them are not known any more
  template <class Visit>
  bool replay(std::uint64_t seen, const xercesc::DOMNode& parent, Visit visit) const;

 private:
  static constexpr std::size_t runsKept = 32;
  static constexpr std::size_t changesKept = 8;

  struct Run {
    const xercesc::DOMNode* parent = nullptr;
    std::uint64_t first = 0;  // number of its first change
    std::uint64_t end = 0;
    std::array<Change, changesKept> changes;  // change n at n % changesKept
  };
  using Runs = std::array<Run, runsKept>;

  const Run& run(std::uint64_t number) const { return (*m_runs)[number % runsKept]; }
  std::uint64_t oldestRun() const { return m_runCount < runsKept ? 0 : m_runCount - runsKept; }
  Run& runOf(const xercesc::DOMNode& parent) noexcept;

  std::uint64_t m_count = 0;
  std::uint64_t m_runCount = 0;  // run n at n % runsKept
  std::unique_ptr<Runs> m_runs;  // null until the first change
};

template <class Visit>
bool ChangeJournal::replay(std::uint64_t seen, const xercesc::DOMNode& parent, Visit visit) const {
  if (seen == m_count) return true;
  std::uint64_t number = m_runCount - 1;
  while (run(number).first > seen && number > oldestRun()) --number;
  if (run(number).first > seen) return false;

  for (; number < m_runCount; ++number) {
    const Run& current = run(number);
    if (current.parent != &parent) continue;
    std::uint64_t change = std::max(seen, current.first);
    if (current.end - change > changesKept) return false;
    for (; change < current.end; ++change) visit(current.changes[change % changesKept]);
  }
  return true;
}
