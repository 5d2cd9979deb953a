#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "platform/core/VRDExport.h"
#include "platform/core/VRDMessage.h"

/// An ordered set of messages, which it owns. Copies are deep. An object belongs to one thread at a
/// time.
class VRD_EXPORT VRDMessageSet {
 public:
  VRDMessageSet();
  VRDMessageSet(const VRDMessageSet& source);
  VRDMessageSet& operator=(const VRDMessageSet& source);
  virtual ~VRDMessageSet();

  /// Appends a copy: @p message may end right after the call. If that finds no memory, the set
  /// stays as it was.
  void addMessage(const VRDMessageBase& message);

  std::size_t getMessageCount() const { return m_messages.size(); }
  /// Message @p index, in the order of adding. @p index must be below the count.
  const VRDMessageBase& getMessageAt(std::size_t index) const { return *m_messages[index]; }

 private:
  std::vector<std::unique_ptr<VRDMessageBase>> m_messages;
};
