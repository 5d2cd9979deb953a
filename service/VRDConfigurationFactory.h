#pragma once

#include "platform/core/VRDExport.h"
#include "service/IVRDConfiguration.h"

/// Hands out service objects. Any thread may call it at any time.
///
/// Making a service object reads nothing, so it succeeds in a process without an installation.
class VRD_EXPORT VRDConfigurationFactory {
 public:
  VRDConfigurationFactory() = delete;

  /// The service object that all of the process share: always the same, never null, and there until
  /// the process ends. Throws `std::bad_alloc`; the next call then tries again.
  static IVRDConfiguration* getInstance();

  /// A service object of the caller's own, with its own tables, to be given back to
  /// `releaseObject`. Never null. Throws `VRDOutOfMemoryError`.
  static IVRDConfiguration* createObject();

  /// Ends an object from `createObject`, which nobody may be using. Null and the shared object are
  /// left alone.
  static void releaseObject(IVRDConfiguration* object);
};
