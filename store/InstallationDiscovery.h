#pragma once

#include <functional>

#include "platform/core/I18NString.h"

/// Where an installation's "bin" directory can be named, in the order in which it is looked for.
enum class InstallationSource {
  ExecPath,          ///< ZAN_EXEC_PATH: the "bin" directory itself.
  Root,              ///< ZAN_ROOT: the installation root.
  CurrentDirectory,  ///< The current directory is a child of the installation root.
  RootLink,          ///< ./zanroot.link: its first line names the installation root.
  LibraryPath,       ///< LD_LIBRARY_PATH: the directory of it that holds this library.
};

/// Takes a candidate and says whether it is accepted.
using InstallationOffer = std::function<bool(InstallationSource source, const I18NString& binDir)>;

/// Offers the candidates of all sources in order until one is accepted. Each source gives one
/// candidate at most. Reads the environment and the current directory afresh and keeps nothing.
/// Throws `VRDOutOfMemoryError` or `std::bad_alloc` for want of memory, and what @p offer throws.
/// @return whether a candidate was accepted
bool discoverInstallation(const InstallationOffer& offer);
