#pragma once

#include <exception>
#include <new>

#include "platform/core/VRDErrors.h"
#include "platform/core/VRDFileLocation.h"
#include "platform/core/VRDRaise.h"

/// Runs an allocation so that what leaves it is a member of the exception family.
///
/// | what happens in @p allocate       | what leaves           | records of the site     |
/// |-----------------------------------|-----------------------|-------------------------|
/// | it gives null                     | `VRDOutOfMemoryError` | VRD_THROW, VRD_RETHROW  |
/// | it throws a `VRDThrowable`        | the same object       | VRD_RETHROW             |
/// | it throws `std::bad_alloc`        | `VRDOutOfMemoryError` | VRD_THROW               |
/// | it throws another `std::exception`| `VRDStdExceptionError`| VRD_THROW               |
///
/// The error finds its way out even when no memory is left at all. What is no `std::exception`
/// either passes on unchanged.
///
/// @param where    the site, one location for all records
/// @param allocate takes nothing and gives a pointer
/// @return what @p allocate gave, never null
template <class Allocate>
auto VRDGuardedAllocation(const VRDFileLocation& where, Allocate allocate) -> decltype(allocate()) {
  try {
    auto* allocated = allocate();
    if (allocated == nullptr) VRDOutOfMemoryError(0, nullptr).hurl(where, nullptr, "VRD_THROW");
    return allocated;
  } catch (VRDThrowable& error) {
    error.addBackTrace(where, nullptr, "VRD_RETHROW");
    throw;
  } catch (std::bad_alloc&) {
    VRDOutOfMemoryError(0, nullptr).hurl(where, nullptr, "VRD_THROW");
  } catch (std::exception& error) {
    VRDStdExceptionError(error).hurl(where, nullptr, "VRD_THROW");
  }
}

/// `new Type(arguments...)` as a guarded allocation of this place. Without arguments the comma
/// stays: `VRD_GUARDED_NEW(Type, )`.
#define VRD_GUARDED_NEW(Type, ...) \
  VRDGuardedAllocation(VRD_LOCATION, [&] { return new Type(__VA_ARGS__); })
