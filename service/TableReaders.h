#pragma once

#include <atomic>

/// Who reads a table right now, so that whoever replaces one knows when the old one can go.
///
/// A reader opens a section, takes the table's address, and is done with the table when it closes
/// the section. It takes no lock and waits for nobody, and readers on different threads do not
/// write to the same cache line. One count serves the tables of all service objects: sections are
/// short, and replacing is rare.
///
/// Why nothing is freed under a reader: the section is counted before the address is taken, and
/// `wait` looks at the counts after the new address was put in place. So a reader that got the old
/// address is in the count until it is done, and each count was seen at zero before `wait`
/// returned. This asks for sequential consistency on both sides.
class TableReaders {
 public:
  /// One reading, for one block. What is inside must not replace a table.
  class Section {
   public:
    Section() noexcept;
    ~Section() { m_open.fetch_sub(1, std::memory_order_release); }
    Section(const Section&) = delete;
    Section& operator=(const Section&) = delete;

   private:
    std::atomic<long>& m_open;
  };

  TableReaders() = delete;

  /// Returns once every section that was open at the call is closed; later ones are not waited for.
  /// Any thread may call it outside a section.
  static void wait();
};
