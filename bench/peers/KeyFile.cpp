#include <glib.h>

#include <stdexcept>

#include "bench/peers/Peer.h"

namespace {

std::string taken(char* text) {
  const std::string copy = text == nullptr ? "" : text;
  g_free(text);
  return copy;
}

class KeyFilePeer : public Peer {
 public:
  explicit KeyFilePeer(const std::string& file) : m_file(g_key_file_new()) {
    if (!g_key_file_load_from_file(m_file, file.c_str(), G_KEY_FILE_KEEP_COMMENTS, nullptr)) {
      throw std::runtime_error("cannot read " + file);
    }
  }
  ~KeyFilePeer() override { g_key_file_free(m_file); }
  KeyFilePeer(const KeyFilePeer&) = delete;
  KeyFilePeer& operator=(const KeyFilePeer&) = delete;

  std::string get(const std::string& name) const override {
    const auto [section, key] = sectionAndKey(name);
    return taken(g_key_file_get_string(m_file, section.c_str(), key.c_str(), nullptr));
  }
  void set(const std::string& name, const std::string& value) override {
    const auto [section, key] = sectionAndKey(name);
    g_key_file_set_string(m_file, section.c_str(), key.c_str(), value.c_str());
  }
  std::string text() const override { return taken(g_key_file_to_data(m_file, nullptr, nullptr)); }

 private:
  GKeyFile* m_file;
};

}  // namespace

std::unique_ptr<Peer> openPeer(const std::string& file) {
  return std::make_unique<KeyFilePeer>(file);
}
