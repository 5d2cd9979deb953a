#pragma once

#include <atomic>
#include <memory>
#include <utility>

#include "platform/core/ThreadAnnotations.h"
#include "platform/core/VRDFileLocation.h"
#include "platform/core/VRDGuardedAllocation.h"
#include "platform/core/VRDThreads.h"
#include "service/TableReaders.h"

/// A table of a service object, and the one way in which such a table lives: absent, made once at
/// its first use, perhaps replaced later.
///
/// The lock that each operation names is the one that guards the table; it is the same every time.
/// A content is filled before anybody sees it and is read without a lock from then on.
template <class Content>
class ServiceTable {
 public:
  ServiceTable() = default;
  ~ServiceTable() { free(); }
  ServiceTable(const ServiceTable&) = delete;
  ServiceTable& operator=(const ServiceTable&) = delete;

  /// Makes the content and has @p fill put in what belongs there, unless the table is present.
  /// Takes the lock only to do so.
  ///
  /// If @p fill throws, the table is present all the same, with what @p fill came to: a source that
  /// fails is told to one caller and not asked again. If there is no memory for the content, the
  /// table stays absent.
  /// @param where the place that a failed allocation is attributed to
  template <class Fill>
  void makeOnce(VRDThreadCriticalSection& lock, const VRDFileLocation& where, Fill fill) {
    if (isPresent()) return;
    VRDThreadGuard guard(lock);
    if (isPresent()) return;
    std::unique_ptr<Content> content = allocate(where);
    try {
      fill(*content);
    } catch (...) {
      publish(std::move(content));
      throw;
    }
    publish(std::move(content));
  }

  /// Puts a new content, filled by @p fill, in the place of what the table holds, if anything.
  /// Readers see the one or the other, and the old one goes when the last of them is done with it.
  /// If anything is thrown, the table stays as it was.
  template <class Fill>
  void replace(VRDThreadCriticalSection& lock, const VRDFileLocation& where, Fill fill)
      VRD_REQUIRES(lock) {
    static_cast<void>(lock);
    std::unique_ptr<Content> content = allocate(where);
    fill(*content);
    const std::unique_ptr<Content> old = publish(std::move(content));
    if (old) TableReaders::wait();
  }

  /// Gives the content to @p read and returns what that returns: no reference into the content.
  /// The table must be present. Takes no lock.
  template <class Read>
  auto read(Read read) const {
    const TableReaders::Section section;
    return read(std::as_const(*m_content.load(std::memory_order_seq_cst)));
  }

  Content copy() const {
    return read([](const Content& content) { return content; });
  }

  /// The content, for the holder of the lock; the table must be present. Only a content that nobody
  /// reads without the lock may be changed.
  Content& held(VRDThreadCriticalSection& lock) VRD_REQUIRES(lock) {
    static_cast<void>(lock);
    return *m_content.load(std::memory_order_relaxed);
  }

  /// Empties the content where it is, if there is one; cannot fail. Only for a content that nobody
  /// reads without the lock.
  void clear(VRDThreadCriticalSection& lock) noexcept VRD_REQUIRES(lock) {
    if (isPresent()) held(lock).clear();
  }

  /// Back to absent. Nobody may be using the table.
  void free() noexcept { delete m_content.exchange(nullptr, std::memory_order_relaxed); }

 private:
  bool isPresent() const noexcept { return m_content.load(std::memory_order_acquire) != nullptr; }

  static std::unique_ptr<Content> allocate(const VRDFileLocation& where) {
    return std::unique_ptr<Content>(VRDGuardedAllocation(where, [] { return new Content; }));
  }

  std::unique_ptr<Content> publish(std::unique_ptr<Content> content) noexcept {
    return std::unique_ptr<Content>(
        m_content.exchange(content.release(), std::memory_order_seq_cst));
  }

  std::atomic<Content*> m_content{nullptr};
};
