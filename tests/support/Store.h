#pragma once

#include <sstream>
#include <string>

#include "store/VRDConfiguration.h"
#include "store/VRDConfigurationState.h"

/// Ends the store of the process and forgets the installation and the startup document, so that the
/// next use begins as in a new process.
inline void startOver() {
  delete VRDConfiguration::g_singletonVRDConfiguration;
  m_bStartupInitialized = 0;
  s_bInitializedDirPath = 0;
}

inline VRDConfiguration& store() { return *VRDConfiguration::getInstance(); }

/// Takes in @p text as query results.
inline VRDCFGAPI_ErrorState initWith(const std::string& text, VRDConfiguration& target = store()) {
  std::istringstream source(text);
  IBJBufferedInputStream stream(source);
  return target.init(stream);
}

/// What a text read gives, with its state.
struct TextRead {
  VRDCFGAPI_ErrorState state;
  std::string text;
};

inline TextRead readText(const char* name, int decrypt = 0, VRDConfiguration& from = store()) {
  I18NString text = "left over";
  const VRDCFGAPI_ErrorState state = from.getValue(name, decrypt, text);
  return {state, text.c_str()};
}

/// The text of a parameter, where nothing is expected to fail.
inline std::string textOf(const char* name, VRDConfiguration& from = store()) {
  const TextRead read = readText(name, 0, from);
  return read.state == VRDCFGAPI_NoError ? read.text : "state " + std::to_string(read.state);
}
