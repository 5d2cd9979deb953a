#pragma once

#include "crypto/ProviderEntryPoints.h"

/// The binding of a crypto provider, a library that is loaded by name at run time.
///
/// It is either open, with every entry point bound, or it is not, and then every entry point
/// answers -1: nobody needs to ask `isOpen` to call safely. An absent provider, one that does not
/// load and one that lacks an entry point are alike; nothing is thrown or reported for them.
///
/// Has no lock. Once open it is only read, and entry points may be called from any thread as far as
/// the provider allows it.
class VRDCrypto {
 public:
  /// Opens the provider @p name; `isOpen` tells how it went.
  explicit VRDCrypto(const char* name);
  /// Leaves the provider loaded: handles and memory of it may still be in use.
  virtual ~VRDCrypto();
  VRDCrypto(const VRDCrypto&) = delete;
  VRDCrypto& operator=(const VRDCrypto&) = delete;

  /// 1 or 0.
  int isOpen() const { return m_libraryHandle != nullptr ? 1 : 0; }

  /// Loads the provider, unless that has happened, and binds all entry points. If one is missing,
  /// the provider is unloaded and none stays bound.
  /// @return what `isOpen` gives then
  int open(const char* name);

  /// Loads the provider and binds nothing.
  /// @param name "X" for the file "libX.so" in the effective working directory
  /// @return 1 if it was loaded, else 0
  int tryOpen(const char* name);

  /// Unbinds and unloads the provider; does nothing if it is not open.
  void close();

  /// @name The entry points
  /// Each calls the provider and returns what it answers. An unbound one returns -1; if it ends in
  /// an error out that is not null, that receives an empty static text.
  /// @{
#define VRD_DECLARE(NAME, ERROR_OUT, PARAMETERS, ...) int NAME PARAMETERS;
  VRD_PROVIDER_ENTRY_POINTS(VRD_DECLARE)
#undef VRD_DECLARE
  /// @}

 private:
  bool bindSlots();
  void clearSlots();

  void* m_libraryHandle = nullptr;
#define VRD_SLOT(NAME, ERROR_OUT, PARAMETERS, ...) int(*m_##NAME) PARAMETERS = nullptr;
  VRD_PROVIDER_ENTRY_POINTS(VRD_SLOT)
#undef VRD_SLOT
};
