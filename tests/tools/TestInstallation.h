#pragma once

#include <string>
#include <string_view>

#include "tests/support/Installation.h"
#include "tests/tools/CommandRunner.h"

/// An installation that the command is asked about.
class TestInstallation : public Installation {
 public:
  using Installation::Installation;

  std::string file(std::string_view name) const { return (*this / name).string(); }
  std::string read(std::string_view name) const { return contentOf(*this / name); }

  /// A call of the command that names this installation.
  CommandCall call(const std::vector<std::string>& arguments = {}) const {
    CommandCall result{{"--root", path().string()}};
    result.arguments.insert(result.arguments.end(), arguments.begin(), arguments.end());
    return result;
  }
  CommandResult run(const std::vector<std::string>& arguments,
                    const std::string& input = "") const {
    CommandCall asked = call(arguments);
    asked.input = input;
    return runCommand(asked);
  }
};

/// A call about the sample installation.
inline CommandCall sampleCall() { return {{"--root", VRDCFG_SAMPLE}}; }
