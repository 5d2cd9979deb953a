#pragma once

#include "foundation/VRDCFGAPI_ErrorState.h"
#include "platform/core/VRDException.h"
#include "platform/core/VRDExport.h"

/// The one exception that the service raises. Its code is a `VRDCFGAPI_ErrorState`, its severity 1;
/// it carries the catalogue message of its state, where the state has one.
///
/// A value, thrown and caught by type:
/// @code
/// try {
///   text = service->getValue(name, 1);
/// } catch (const VRDConfigurationException& error) {
///   if (error.getCode() == VRDCFGAPI_CryptoUnavailable) ...
/// }
/// @endcode
class VRD_EXPORT VRDConfigurationException : public VRDException {
 public:
  /// With the message of @p state, as `addLocalizationMessage` gives it.
  VRDConfigurationException(VRDSeverity severity, VRDCFGAPI_ErrorState state);
  /// With @p message and no other; a copy of it is kept.
  VRDConfigurationException(VRDSeverity severity, VRDCFGAPI_ErrorState state,
                            VRDMessageBase& message);
  VRDConfigurationException(const VRDConfigurationException& source);
  ~VRDConfigurationException() override;
  VRDConfigurationException& operator=(const VRDConfigurationException& source);

  /// Adds a copy of @p message.
  VRDConfigurationException& operator<<(const VRDMessageBase& message);

  /// Adds the message of @p state from the catalogue "vrdcfgapimsgs". Adds nothing for a state that
  /// has none, or that is not in the numbering.
  void addLocalizationMessage(VRDCFGAPI_ErrorState state);

  /// Throws `VRDOutOfMemoryError` if there is no memory for the copy, which the caller owns.
  VRDConfigurationException* clone() const override;
  [[noreturn]] void hurl(const VRDFileLocation& where, const char* text,
                         const char* macroWord) override;
  const char* getThrowableName() const override;
};
