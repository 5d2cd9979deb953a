#pragma once

#include <unistd.h>

#include <string>

/// An open file, closed at the end.
class PosixFile {
 public:
  explicit PosixFile(int descriptor) : m_descriptor(descriptor) {}
  ~PosixFile() {
    if (isOpen()) ::close(m_descriptor);
  }
  PosixFile(const PosixFile&) = delete;
  PosixFile& operator=(const PosixFile&) = delete;

  bool isOpen() const { return m_descriptor >= 0; }
  int descriptor() const { return m_descriptor; }

 private:
  int m_descriptor;
};

/// Tells what the system refused, and why: by `errno`, as it is on entry.
[[noreturn]] void throwSystemError(const std::string& path, const char* what);

/// What root makes for a service is the service's: gives @p file, named @p path in messages, to the
/// owner of @p folder. Does nothing for any other user. Throws `KeyError`.
void giveToOwnerOf(const std::string& folder, const std::string& path, const PosixFile& file);
