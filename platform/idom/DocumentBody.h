#pragma once

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMNode.hpp>

#include <atomic>
#include <cstddef>
#include <optional>

#include "platform/idom/ChangeJournal.h"
#include "platform/idom/SpareElements.h"

/// What all handles on one document and on its nodes share. The last one to end, on whatever
/// thread, ends the document.
class DocumentBody {
 public:
  /// Takes the document over, also when it throws. The caller has to `retain` the body.
  static DocumentBody* adopt(xercesc::DOMDocument* document);

  void retain() noexcept { m_handles.fetch_add(1, std::memory_order_relaxed); }
  void release() noexcept {
    if (m_handles.fetch_sub(1, std::memory_order_acq_rel) == 1) delete this;
  }

  xercesc::DOMDocument& document() const { return *m_document; }
  SpareElements& spareElements() { return m_spareElements; }

  /// @name Changes of children, for nodes that a handle may designate
  /// They throw what Xerces-C throws, and then nothing is changed.
  /// @{
  void append(xercesc::DOMNode& parent, xercesc::DOMNode& child);
  void insert(xercesc::DOMNode& parent, xercesc::DOMNode& child, xercesc::DOMNode& before);
  void remove(xercesc::DOMNode& parent, xercesc::DOMNode& child);
  void replace(xercesc::DOMNode& parent, xercesc::DOMNode& newChild, xercesc::DOMNode& oldChild);
  /// @}

  /// From now on there may be live lists, so changes are written down for them.
  void watch() noexcept {
    if (!m_watched.load(std::memory_order_relaxed))
      m_watched.store(true, std::memory_order_relaxed);
  }
  const ChangeJournal& journal() const { return m_journal; }

 private:
  explicit DocumentBody(xercesc::DOMDocument* document) : m_document(document) {}
  ~DocumentBody() { m_document->release(); }

  /// What a change brings to a parent; nothing, if it only takes away.
  using Arrival = std::optional<ChangeJournal::Change>;

  /// Does @p work, which moves @p moved, and writes it down for the live lists.
  template <class Work>
  void change(xercesc::DOMNode& parent, xercesc::DOMNode& moved, Arrival arrival, Work work);

  bool isWatched() const { return m_watched.load(std::memory_order_relaxed); }

  xercesc::DOMDocument* m_document;
  std::atomic<std::size_t> m_handles{0};
  std::atomic<bool> m_watched{false};
  ChangeJournal m_journal;
  SpareElements m_spareElements;
};
