#pragma once

#include <mutex>

#include "platform/core/ThreadAnnotations.h"
#include "platform/core/VRDExport.h"

/// Base of all locks. Taken through `VRDThreadGuard` only.
/// Locks are initialised at compile time and have nothing to destroy: a static one serves from
/// before the first constructor until after the last exit handler.
class VRD_EXPORT VRD_CAPABILITY VRDThreadLockableResource {
 public:
  VRDThreadLockableResource(const VRDThreadLockableResource&) = delete;
  VRDThreadLockableResource& operator=(const VRDThreadLockableResource&) = delete;

 protected:
  constexpr VRDThreadLockableResource() = default;
  ~VRDThreadLockableResource() = default;

 private:
  friend class VRDThreadGuard;
  virtual void lock() VRD_ACQUIRE() = 0;
  virtual void unlock() VRD_RELEASE() = 0;
};

/// A lock. Its holder must not take it again.
class VRD_EXPORT VRDThreadCriticalSection final : public VRDThreadLockableResource {
 public:
  /// @param shared without effect: every lock serves all threads of the process
  constexpr explicit VRDThreadCriticalSection([[maybe_unused]] int shared) {}

 private:
  void lock() override;
  void unlock() override;
  std::mutex m_mutex;
};

/// A lock that its holder can take again; free once every taking has been undone.
class VRD_EXPORT VRDThreadRecursiveCriticalSection final : public VRDThreadLockableResource {
 public:
  constexpr VRDThreadRecursiveCriticalSection() = default;

 private:
  void lock() override;
  void unlock() override;
  std::recursive_mutex m_mutex;
};

/// Holds a lock for one block. Always a local object.
class VRD_EXPORT VRD_SCOPED_CAPABILITY VRDThreadGuard {
 public:
  /// Blocks until @p lock is held. Throws `std::system_error` if the platform refuses it.
  explicit VRDThreadGuard(VRDThreadLockableResource& lock) VRD_ACQUIRE(lock);
  ~VRDThreadGuard() VRD_RELEASE();
  VRDThreadGuard(const VRDThreadGuard&) = delete;
  VRDThreadGuard& operator=(const VRDThreadGuard&) = delete;

 private:
  VRDThreadLockableResource& m_lock;
};
