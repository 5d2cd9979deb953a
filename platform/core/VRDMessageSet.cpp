#include "platform/core/VRDMessageSet.h"

VRDMessageSet::VRDMessageSet() = default;

VRDMessageSet::VRDMessageSet(const VRDMessageSet& source) {
  m_messages.reserve(source.m_messages.size());
  for (const auto& message : source.m_messages) m_messages.push_back(message->clone());
}

VRDMessageSet& VRDMessageSet::operator=(const VRDMessageSet& source) {
  // By copy and swap. The copy comes first: a failure leaves this set as it was, and a set may be
  // given itself.
  VRDMessageSet copy(source);
  m_messages.swap(copy.m_messages);
  return *this;
}

VRDMessageSet::~VRDMessageSet() = default;

void VRDMessageSet::addMessage(const VRDMessageBase& message) {
  // Cloned before the set grows, for the message may be one of its own.
  m_messages.push_back(message.clone());
}
