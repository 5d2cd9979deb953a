#pragma once

#include <list>
#include <map>

#include "foundation/VRDCFGAPI_ErrorState.h"
#include "platform/core/I18NString.h"
#include "platform/core/VRDExport.h"

/// The installation's startup document as it stands on disk, without the store: no defaults are
/// merged in, nothing is decrypted, and no variable is replaced. What is disabled does not appear.
///
/// The first call that needs them reads the parameters; the object then keeps them, and a later
/// change of the file is seen by other objects only. A document without parameters is read again
/// each time, and so is one that failed.
///
/// | state | meaning                                                     |
/// |-------|-------------------------------------------------------------|
/// | 0     | done                                                        |
/// | 1     | the document is missing, or its owner may not read it       |
/// | 3     | it does not parse, or cannot be opened                      |
/// | 4     | its root is not the configuration's; the whole document can be had all the same |
/// | 9     | an exception                                                |
///
/// In every state but 0 the arguments stay as they were. Any thread may use an object at any time;
/// only its destruction needs it to itself. Reading the file is serial in the process.
class VRD_EXPORT VRDStartupConfiguration {
 public:
  /// Reads nothing. Throws what the start of the layers below throws.
  VRDStartupConfiguration();
  /// An object that reads the document by itself: what @p source has read is not taken over.
  VRDStartupConfiguration(const VRDStartupConfiguration& source);
  VRDStartupConfiguration& operator=(const VRDStartupConfiguration&) = delete;
  virtual ~VRDStartupConfiguration();

  /// Reads the parameters, unless that has happened. The other operations do so by themselves.
  /// Unlike them, throws what goes wrong; the object then holds no parameters.
  VRDCFGAPI_ErrorState initialize();

  /// Replaces what @p names holds by the names of all parameters, in the order of their code
  /// points.
  VRDCFGAPI_ErrorState getParameterNames(std::list<I18NString>& names);

  /// The text of a parameter as it is stored: bare for a plain value, XML (the value element with
  /// its namespace declarations) for an opaque one. Of two parameters with one name the first
  /// counts.
  /// @param unused stands where the store takes its decrypt flag; nothing is decrypted here
  /// @param value  empty for an unknown name, which is no failure
  VRDCFGAPI_ErrorState getValue(const I18NString& name, int unused, I18NString& value);

  /// The document as XML, with its path values made absolute. Reads the file at each call.
  VRDCFGAPI_ErrorState getStartupConfigurationDocument(I18NString& text);

 private:
  using Values = std::map<I18NString, I18NString>;

  VRDCFGAPI_ErrorState readOnce(const Values*& values);

  Values m_values;  // never changes once it holds anything
};
