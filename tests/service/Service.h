#pragma once

#include <list>
#include <map>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/VRDConfigurationException.h"
#include "service/VRDConfigurationFactory.h"
#include "tests/support/Installation.h"
#include "tests/support/Store.h"

/// An installation with a locale document and a component list.
class ServiceInstallation : public CurrentInstallation {
 public:
  explicit ServiceInstallation(std::string_view parameters = "") : CurrentInstallation(parameters) {
    startOver();  // one test may stand in several installations, and one process run many tests
  }

  /// @param sections the children of the document's root
  void setLocales(std::string_view sections) const {
    setLocaleDocument("<localeConfiguration>" + std::string(sections) + "</localeConfiguration>");
  }
  void setLocaleDocument(std::string_view text) const {
    write("configuration/zanlocale.xml", text);
  }
  void setComponents(std::string_view lines) const { write("cmplst.txt", lines); }
};

/// A service object of the test's own.
class PrivateService {
 public:
  PrivateService() : m_service(VRDConfigurationFactory::createObject()) {}
  ~PrivateService() { VRDConfigurationFactory::releaseObject(m_service); }
  PrivateService(const PrivateService&) = delete;
  PrivateService& operator=(const PrivateService&) = delete;

  IVRDConfiguration* operator->() const { return m_service; }
  IVRDConfiguration& operator*() const { return *m_service; }

 private:
  IVRDConfiguration* m_service;
};

/// One parameter of a query result: its name is that of the element.
inline std::string queried(const std::string& name, const std::string& value) {
  return "<" + name + " opaque=\"true\"><value>" + value + "</value></" + name + ">";
}

/// Gives the query result with @p parameters to the service.
inline void initWith(IVRDConfiguration& service, const std::string& parameters) {
  std::istringstream text("<queryResult><group>" + parameters + "</group></queryResult>");
  IBJBufferedInputStream stream(text);
  service.init(stream);
}

/// A value with one item for each word of @p words.
inline std::string items(std::string_view words) {
  std::istringstream stream{std::string(words)};
  std::string text;
  for (std::string word; stream >> word;) text += "<item>" + word + "</item>";
  return text;
}

/// A value with one pair for each "key=value" in @p words.
inline std::string pairs(std::string_view words) {
  std::istringstream stream{std::string(words)};
  std::string text;
  for (std::string word; stream >> word;) {
    const std::size_t at = word.find('=');
    text += "<item><key>" + word.substr(0, at) + "</key><value>" + word.substr(at + 1) +
            "</value></item>";
  }
  return text;
}

inline std::vector<std::string> plain(const std::list<I18NString>& list) {
  std::vector<std::string> texts;
  for (const I18NString& text : list) texts.emplace_back(text.c_str());
  return texts;
}

inline std::map<std::string, std::string> plain(const std::map<I18NString, I18NString>& map) {
  std::map<std::string, std::string> texts;
  for (const auto& entry : map) texts.emplace(entry.first.c_str(), entry.second.c_str());
  return texts;
}

/// The state that @p operation raises; 0 if it raises nothing.
template <class Operation>
long stateOf(Operation operation) {
  try {
    operation();
    return 0;
  } catch (const VRDConfigurationException& error) {
    return error.getCode();
  }
}
