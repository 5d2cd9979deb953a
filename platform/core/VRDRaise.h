#pragma once

#include "platform/core/VRDErrors.h"
#include "platform/core/VRDFileLocation.h"
#include "platform/core/VRDThrowable.h"

/// The place of the macro's use. A source file says once which unit it belongs to:
/// `#define VRD_SOURCE_UNIT "VRDConfiguration"`.
#define VRD_LOCATION (VRDFileLocation{VRD_SOURCE_UNIT, __LINE__})

/// Raises @p error, a lvalue or temporary of the exception family.
#define VRD_THROW(error) (error).hurl(VRD_LOCATION, nullptr, "VRD_THROW")

/// Inside `catch (VRDThrowable& error)`: notes the place and passes the same object on.
#define VRD_RETHROW(error)                                      \
  do {                                                          \
    (error).addBackTrace(VRD_LOCATION, nullptr, "VRD_RETHROW"); \
    throw;                                                      \
  } while (false)

/// Raises a `VRDAssertError` with the text of the use, semicolon included, unless @p condition
/// holds.
#define VRD_ASSERT(condition)                                      \
  do {                                                             \
    if (!(condition)) {                                            \
      VRD_THROW(VRDAssertError(0, "VRD_ASSERT(" #condition ");")); \
    }                                                              \
  } while (false)
