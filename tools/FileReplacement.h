#pragma once

#include <stdexcept>
#include <string>

/// A file could not be replaced; the text names it and tells why. It stands as it was.
class FileReplacementError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The replacement of one file's content as a whole: whoever reads the file meets the old content
/// or the new one, also after a crash. Owner and mode stay; a symbolic link stays one, and the file
/// that it leads to is replaced. Two of these on files of one folder wait for each other, from
/// construction to end, so what was read is what is replaced.
class FileReplacement {
 public:
  /// Throws `FileReplacementError`, as the other operations do.
  explicit FileReplacement(const std::string& path);
  ~FileReplacement();
  FileReplacement(const FileReplacement&) = delete;
  FileReplacement& operator=(const FileReplacement&) = delete;

  std::string read() const;
  void replaceBy(const std::string& content) const;

 private:
  std::string m_path;  // free of links
  std::string m_folder;
  int m_lockedFolder;  // closing it ends the lock
};
