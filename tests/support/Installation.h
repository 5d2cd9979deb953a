#pragma once

#include <string>
#include <string_view>

#include "tests/support/EnvironmentGuard.h"
#include "tests/support/TemporaryFolder.h"

/// A startup document with @p parameters as the children of its root.
inline std::string startupDocument(std::string_view parameters) {
  return "<vtn:parameters version=\"1.0\" xmlns:vtn=\"http://zandor.com/schemas/vtconfig/1/\""
         " xmlns:cfg=\"http://zandor.com/schemas/configparams/XMLSchema/1/\""
         " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\">" +
         std::string(parameters) + "</vtn:parameters>";
}

/// One parameter of a startup document.
/// @param attributes of the parameter, @p valueAttributes of its value: as they stand in the tag
inline std::string parameter(std::string_view name, std::string_view value,
                             std::string_view attributes = "",
                             std::string_view valueAttributes = "") {
  return "<vtn:parameter name=\"" + std::string(name) + "\" " + std::string(attributes) +
         "><vtn:value " + std::string(valueAttributes) + ">" + std::string(value) +
         "</vtn:value></vtn:parameter>";
}

/// An installation of the test's own: a root with "bin" and "configuration".
class Installation : public TemporaryFolder {
 public:
  Installation() { std::filesystem::create_directories(*this / "bin"); }
  /// @param prefix of the root's name
  explicit Installation(std::string_view parameters, const std::string& prefix = "vrd")
      : TemporaryFolder(prefix) {
    std::filesystem::create_directories(*this / "bin");
    setParameters(parameters);
  }

  std::string bin() const { return (*this / "bin").string(); }
  std::filesystem::path startupFile() const { return *this / "configuration/zanstartup.xml"; }
  void setDocument(std::string_view text) const { write("configuration/zanstartup.xml", text); }
  void setParameters(std::string_view parameters) const {
    setDocument(startupDocument(parameters));
  }
};

/// The installation that the process is in, named by ZAN_EXEC_PATH for one block; no other way to
/// find one is open in that time.
class CurrentInstallation : public Installation {
 public:
  explicit CurrentInstallation(std::string_view parameters = "", const std::string& prefix = "vrd")
      : Installation(parameters, prefix) {}

 private:
  EnvironmentGuard m_execPath{"ZAN_EXEC_PATH", bin().c_str()};
  EnvironmentGuard m_root{"ZAN_ROOT", nullptr};
  EnvironmentGuard m_libraryPath{"LD_LIBRARY_PATH", nullptr};
};
