#include <boost/property_tree/ptree.hpp>
#include <boost/property_tree/xml_parser.hpp>
#include <sstream>

#include "bench/peers/Peer.h"

namespace {

class PropertyTreePeer : public Peer {
 public:
  explicit PropertyTreePeer(const std::string& file) {
    boost::property_tree::read_xml(file, m_tree, boost::property_tree::xml_parser::trim_whitespace);
  }
  std::string get(const std::string& name) const override {
    return m_tree.get<std::string>("config." + name);
  }
  void set(const std::string& name, const std::string& value) override {
    m_tree.put("config." + name, value);
  }
  std::string text() const override {
    std::ostringstream stream;
    boost::property_tree::write_xml(stream, m_tree,
                                    boost::property_tree::xml_writer_settings<std::string>(' ', 2));
    return stream.str();
  }

 private:
  boost::property_tree::ptree m_tree;
};

}  // namespace

std::unique_ptr<Peer> openPeer(const std::string& file) {
  return std::make_unique<PropertyTreePeer>(file);
}
