#include <KConfig>
#include <KConfigGroup>
#include <QTemporaryFile>

#include "bench/peers/Peer.h"

namespace {

class KConfigPeer : public Peer {
 public:
  explicit KConfigPeer(const std::string& file)
      : m_config(QString::fromStdString(file), KConfig::SimpleConfig) {}

  std::string get(const std::string& name) const override {
    const auto [section, key] = sectionAndKey(name);
    return m_config.group(QByteArray::fromStdString(section))
        .readEntry(key.c_str(), QString())
        .toStdString();
  }
  void set(const std::string& name, const std::string& value) override {
    const auto [section, key] = sectionAndKey(name);
    m_config.group(QByteArray::fromStdString(section))
        .writeEntry(key.c_str(), QString::fromStdString(value));
  }
  /// It writes to files only.
  std::string text() const override {
    QTemporaryFile file;
    file.open();
    const std::unique_ptr<KConfig> copy(m_config.copyTo(file.fileName()));
    copy->sync();
    return file.fileName().toStdString();
  }

 private:
  mutable KConfig m_config;
};

}  // namespace

std::unique_ptr<Peer> openPeer(const std::string& file) {
  return std::make_unique<KConfigPeer>(file);
}
