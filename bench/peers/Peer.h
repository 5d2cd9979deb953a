#pragma once

#include <memory>
#include <string>
#include <utility>

/// A configuration of another library, in that library's own format and with what it offers for
/// the same work. A name is "section.key".
class Peer {
 public:
  virtual ~Peer() = default;

  virtual std::string get(const std::string& name) const = 0;
  virtual void set(const std::string& name, const std::string& value) = 0;
  /// The whole configuration as the library writes it.
  virtual std::string text() const = 0;
};

/// Each peer has a program of its own and defines this. Throws if @p file cannot be read.
std::unique_ptr<Peer> openPeer(const std::string& file);

inline std::pair<std::string, std::string> sectionAndKey(const std::string& name) {
  const std::size_t dot = name.find('.');
  return {name.substr(0, dot), name.substr(dot + 1)};
}
