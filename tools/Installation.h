#pragma once

#include <string>
#include <vector>

#include "store/InstallationDiscovery.h"
#include "tools/Options.h"
#include "tools/Output.h"

/// A place where the installation's "bin" folder was looked for.
struct InstallationCandidate {
  InstallationSource source;
  std::string folder;
  std::string refusal;  ///< Why it is none; empty for the one that was accepted.
};

/// How the installation was found: the way that the library itself goes, with what it met.
class Installation {
 public:
  /// Looks for the installation in the present environment.
  static Installation find();

  bool found() const { return !m_candidates.empty() && m_candidates.back().refusal.empty(); }
  /// In the order in which they were tried. If one was accepted, it is the last.
  const std::vector<InstallationCandidate>& candidates() const { return m_candidates; }

 private:
  std::vector<InstallationCandidate> m_candidates;
};

/// What a person calls the source: the variable or file that names the folder.
const char* nameOf(InstallationSource source);

/// One of the installation's three files.
struct InstallationFile {
  const char* role;
  std::string path;     ///< Resolved against the installation.
  std::string trouble;  ///< Why the library takes it for missing or cannot read it; else empty.
};

/// @param relativePath as the library names the file
InstallationFile installationFile(const char* role, const char* relativePath);
InstallationFile startupDocument();
InstallationFile localeDocument();
InstallationFile componentList();

/// Puts --root and --bin into the environment. Before the first call of the library.
void applyInstallationOptions(const Options& options);

/// Whether there is an installation, and it is the one that was asked for; says so if not.
bool requireInstallation(const Options& options, const Output& output);
