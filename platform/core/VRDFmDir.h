#pragma once

#include <string>

#include "platform/core/I18NString.h"
#include "platform/core/VRDExport.h"

/// Path operations, and the process-wide effective working directory that relative paths are
/// resolved against. Paths are bytes; as `I18NString` they are in the platform encoding, which
/// keeps every byte. Any thread may call any operation at any time. Only want of memory makes one
/// throw, `std::bad_alloc`, and then nothing has changed.
class VRD_EXPORT VRDFmDir {
 public:
  VRDFmDir() = delete;

  /// Takes @p dir as the effective working directory if it is an existing directory; whether that
  /// may be read or entered is not asked. Its canonical absolute path, free of symbolic links, is
  /// kept, so a later change of the current directory changes nothing.
  /// @return 1 if accepted; 0 if refused, and the directory stays what it was
  static int setEffectiveWorkingDir(const I18NString& dir);

  /// The directory accepted last, or an empty text.
  static I18NString getEffectiveWorkingDir();

  /// Rewrites a relative @p path, in place, against the effective working directory, or against the
  /// current directory while none was accepted; "." and ".." segments and doubled "/" are removed,
  /// one "/" at the end stays. The file system is not asked: ".." takes away the segment before it.
  /// An absolute path and an empty one stand as they are, and so does any path while there is no
  /// directory to resolve against, because the current one was removed.
  /// @return @p path
  static I18NString& resolveEffectivePath(I18NString& path);
  static std::string& resolveEffectivePath(std::string& path);

  /// Whether @p path names something of exactly the file type in @p mode, with at least the
  /// permission bits in @p mode. 0x8100 asks for a regular file that its owner may read; a mode
  /// without a file type asks for any. Symbolic links are followed.
  /// @return 1 or 0; 0 also for a null or empty path, and for one that cannot be looked at
  static int exists(const char* path, unsigned short mode);

  /// Appends @p tail to @p base with exactly one "/" between, however many they bring along. An
  /// empty base gives the tail as it is; an empty or null tail leaves the base as it is.
  static void joinPath(I18NString& base, const I18NString& tail);
  static void joinPath(std::string& base, const char* tail);

  /// Sets the directory for temporary files. Any text is taken.
  static void setTempPath(const I18NString& path);
  /// What was set last, or an empty text.
  static I18NString getTempPath();
};
