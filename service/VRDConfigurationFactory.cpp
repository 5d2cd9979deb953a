#include "service/VRDConfigurationFactory.h"

#include <atomic>

#include "platform/core/VRDGuardedAllocation.h"
#include "platform/core/VRDThreads.h"
#include "service/VRDConfigurationImpl.h"

#define VRD_SOURCE_UNIT "VRDConfigurationFactory"

namespace {

std::atomic<IVRDConfiguration*> g_singletonVRDConfiguration{nullptr};
VRDThreadCriticalSection g_mutex(0);

}  // namespace

IVRDConfiguration* VRDConfigurationFactory::getInstance() {
  IVRDConfiguration* shared = g_singletonVRDConfiguration.load(std::memory_order_acquire);
  if (shared != nullptr) return shared;
  VRDThreadGuard guard(g_mutex);
  shared = g_singletonVRDConfiguration.load(std::memory_order_relaxed);
  if (shared == nullptr) {
    shared = new VRDConfigurationImpl;
    g_singletonVRDConfiguration.store(shared, std::memory_order_release);
  }
  return shared;
}

IVRDConfiguration* VRDConfigurationFactory::createObject() {
  return VRD_GUARDED_NEW(VRDConfigurationImpl, );
}

void VRDConfigurationFactory::releaseObject(IVRDConfiguration* object) {
  if (object != g_singletonVRDConfiguration.load(std::memory_order_acquire)) delete object;
}
