#pragma once

#include <memory>
#include <regex>
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

/// Something in each of the seven tables, and nothing of it in another.
inline constexpr char allSections[] =
    "<supportedProductLocales><locale id='en'/><locale id='de'/></supportedProductLocales>"
    "<productLocaleMap><localeMap key='*' value='product'/></productLocaleMap>"
    "<supportedContentLocales><locale id='fr'/></supportedContentLocales>"
    "<contentLocaleMap><localeMap key='*' value='content'/></contentLocaleMap>"
    "<supportedCurrencies><currency id='EUR'/></supportedCurrencies>"
    "<supportedFonts><font id='Serif'/></supportedFonts>"
    "<fontsMap><fontMap key='Old' value='Serif'/><fontMap key='Serif' value='New'/></fontsMap>";

/// A service object of the test's own.
struct PrivateService : std::unique_ptr<IVRDConfiguration, void (*)(IVRDConfiguration*)> {
  PrivateService()
      : unique_ptr(VRDConfigurationFactory::createObject(),
                   &VRDConfigurationFactory::releaseObject) {}
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
inline std::string items(const std::string& words) {
  static const std::regex word("\\S+");
  return std::regex_replace(words, word, "<item>$&</item>");
}

/// A value with one pair for each "key=value" in @p words.
inline std::string pairs(const std::string& words) {
  static const std::regex pair("([^\\s=]*)=(\\S*)");
  return std::regex_replace(words, pair, "<item><key>$1</key><value>$2</value></item>");
}

/// How GoogleTest shows a text.
inline void PrintTo(const I18NString& text, std::ostream* out) { *out << text.c_str(); }

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
