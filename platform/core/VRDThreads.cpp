#include "platform/core/VRDThreads.h"

#include <type_traits>

// A lock with a destructor would be gone while an exit handler, or a thread that outlives `main`,
// still asks for it.
static_assert(std::is_trivially_destructible_v<VRDThreadCriticalSection>);
static_assert(std::is_trivially_destructible_v<VRDThreadRecursiveCriticalSection>);

// The same mutexes serve locks asked for as shared and others: a process has no others to share
// with.

void VRDThreadCriticalSection::lock() { m_mutex.lock(); }
void VRDThreadCriticalSection::unlock() { m_mutex.unlock(); }

void VRDThreadRecursiveCriticalSection::lock() { m_mutex.lock(); }
void VRDThreadRecursiveCriticalSection::unlock() { m_mutex.unlock(); }

// Nothing is undone if the platform refuses the lock: then there is no guard, and none ends.
VRDThreadGuard::VRDThreadGuard(VRDThreadLockableResource& lock) : m_lock(lock) { m_lock.lock(); }
VRDThreadGuard::~VRDThreadGuard() { m_lock.unlock(); }
