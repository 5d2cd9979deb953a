#include <libconfig.h>
#include <stdio.h>
#include <stdlib.h>

#include <stdexcept>

#include "bench/peers/Peer.h"

namespace {

class LibconfigPeer : public Peer {
 public:
  explicit LibconfigPeer(const std::string& file) {
    config_init(&m_config);
    if (config_read_file(&m_config, file.c_str()) != CONFIG_TRUE) {
      throw std::runtime_error(config_error_text(&m_config));
    }
  }
  ~LibconfigPeer() override { config_destroy(&m_config); }
  LibconfigPeer(const LibconfigPeer&) = delete;
  LibconfigPeer& operator=(const LibconfigPeer&) = delete;

  std::string get(const std::string& name) const override {
    const char* value = nullptr;
    config_lookup_string(&m_config, name.c_str(), &value);
    return value == nullptr ? "" : value;
  }
  void set(const std::string& name, const std::string& value) override {
    config_setting_set_string(config_lookup(&m_config, name.c_str()), value.c_str());
  }
  std::string text() const override {
    char* bytes = nullptr;
    size_t size = 0;
    FILE* stream = ::open_memstream(&bytes, &size);
    config_write(&m_config, stream);
    ::fclose(stream);
    std::string written(bytes, size);
    ::free(bytes);
    return written;
  }

 private:
  config_t m_config;
};

}  // namespace

std::unique_ptr<Peer> openPeer(const std::string& file) {
  return std::make_unique<LibconfigPeer>(file);
}
