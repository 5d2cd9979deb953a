#include <Poco/SAX/InputSource.h>
#include <Poco/Util/XMLConfiguration.h>

#include <cstdint>
#include <filesystem>
#include <sstream>

#include "bench/peers/Peer.h"

namespace {

class PocoPeer : public Peer {
 public:
  explicit PocoPeer(const std::string& file) : m_configuration(new Poco::Util::XMLConfiguration) {
    Poco::XML::InputSource source(file);
    // It keeps each name once, in a table that does not grow: a third of it stays free.
    const std::uintmax_t names = std::filesystem::file_size(file) / bytesOfOne;
    m_configuration->load(&source, static_cast<unsigned long>(names + names / 2) | smallestPool);
  }

  std::string get(const std::string& name) const override {
    return m_configuration->getString(name);
  }
  void set(const std::string& name, const std::string& value) override {
    m_configuration->setString(name, value);
  }
  std::string text() const override {
    std::ostringstream stream;
    m_configuration->save(stream);
    return stream.str();
  }

 private:
  static constexpr std::uintmax_t bytesOfOne = 60;
  static constexpr unsigned long smallestPool = 511;

  Poco::AutoPtr<Poco::Util::XMLConfiguration> m_configuration;
};

}  // namespace

std::unique_ptr<Peer> openPeer(const std::string& file) { return std::make_unique<PocoPeer>(file); }
