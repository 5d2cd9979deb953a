// The startup document: the store with every read, and the startup object.
#include "fuzz/StoreReading.h"
#include "startup/VRDStartupConfiguration.h"
#include "tests/provider/ReferenceProvider.h"
#include "tests/support/DomTesting.h"

namespace {

/// Has a provider, so that marked values are read to the end: what that refuses is the value
/// itself.
struct InstallationWithKey : ProtectedInstallation {
  InstallationWithKey() { addKey(); }
};

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const InstallationWithKey installation;
  installation.setDocument(textOfInput(data, size));
  startOver();
  readStore(*PrivateService());

  VRDStartupConfiguration startup;
  std::list<I18NString> names;
  I18NString text;
  startup.getParameterNames(names);
  for (const I18NString& name : names) {
    require(startup.getValue(name, 0, text) == VRDCFGAPI_NoError, "a startup value");
    require(store().setValue(name, text) == VRDCFGAPI_NoError, "a value set");
    I18NString now;
    store().getValue(name, 0, now);
    require(name.empty() || text.empty() || now == text, "the value that was set");
  }
  if (startup.getStartupConfigurationDocument(text) == VRDCFGAPI_NoError) {
    require(!parsed(text.utf8()).isNull(), "the startup document as text");
  }
  return 0;
}
