#include "store/VRDConfiguration.h"

#include "crypto/CryptoSession.h"
#include "foundation/ConfigurationVocabulary.h"
#include "platform/core/I18NLibrary.h"
#include "platform/core/VRDFmDir.h"
#include "platform/idom/VRDIDOM_DOMImplementation.h"
#include "store/ParameterIndex.h"
#include "store/VRDConfigurationState.h"

VRDConfiguration* VRDConfiguration::g_singletonVRDConfiguration = nullptr;
std::atomic<int> s_bsingletonVRDConfigurationSet{0};
std::atomic<int> s_btempPathSet{0};
std::atomic<int> s_btempPathSetting{0};
std::atomic<int> m_bStartupInitialized{0};
std::atomic<int> s_bInitializedDirPath{0};
VRDThreadCriticalSection m_mutexDirPath(0);
VRDThreadRecursiveCriticalSection g_singletonVRDConfigurationLock;

namespace {

std::unique_ptr<const I18NString> word(const char* text) {
  return std::make_unique<const I18NString>(text, nullptr, -1, nullptr, nullptr);
}

void createStore() {
  VRDThreadGuard guard(g_singletonVRDConfigurationLock);
  if (s_bsingletonVRDConfigurationSet.load(std::memory_order_relaxed) != 0) return;
  auto store = std::make_unique<VRDConfiguration>();
  // A store whose startup document is wrong still answers from what it has.
  store->init();
  VRDConfiguration::g_singletonVRDConfiguration = store.release();
  s_bsingletonVRDConfigurationSet.store(1, std::memory_order_release);
}

/// Hands the parameter "temp" on, once, also when it is missing or cannot be read. Reading it can
/// call the crypto provider, which may come back here on this thread: it then finds the step under
/// way and goes on.
void handOnTempPath() {
  VRDThreadGuard guard(g_singletonVRDConfigurationLock);
  if (s_btempPathSet.load(std::memory_order_relaxed) != 0) return;
  if (s_btempPathSetting.load(std::memory_order_relaxed) != 0) return;
  s_btempPathSetting.store(1, std::memory_order_relaxed);

  I18NString path;
  const int decrypt = 1;
  if (VRDConfiguration::g_singletonVRDConfiguration->getValue("temp", decrypt, path) ==
      VRDCFGAPI_NoError) {
    VRDFmDir::setTempPath(path);
  }

  s_btempPathSet.store(1, std::memory_order_release);
  s_btempPathSetting.store(0, std::memory_order_relaxed);
}

}  // namespace

VRDConfiguration::VRDConfiguration() : m_index(std::make_unique<ParameterIndex>()) {
  VRDIDOM_DOMImplementation::initialize();
  I18NInitialize();
  m_namespaceUri = word(ConfigNamespaceUri);
  m_parametersQName = word("vtn:parameters");
  m_parametersLocalName = word("parameters");
  m_parameterQName = word("vtn:parameter");
  m_parameterLocalName = word("parameter");
  m_valueQName = word("vtn:value");
  m_valueLocalName = word("value");
  m_nameAttribute = word("name");
  m_encryptedAttribute = word("encrypted");
}

VRDConfiguration::~VRDConfiguration() {
  try {
    closeCryptoSession(m_cryptoHandle);
    m_index->clear();
    m_parameters.clear();
    for (auto* vocable : {&m_namespaceUri, &m_parametersQName, &m_parametersLocalName,
                          &m_parameterQName, &m_parameterLocalName, &m_valueQName,
                          &m_valueLocalName, &m_nameAttribute, &m_encryptedAttribute}) {
      vocable->reset();
    }
    I18NTerminate();
    VRDIDOM_DOMImplementation::terminate();
  } catch (...) {
    // The provider may throw; the process must still come to the end of its store.
  }
  s_btempPathSet = 0;
  s_btempPathSetting = 0;
  s_bsingletonVRDConfigurationSet = 0;
  g_singletonVRDConfiguration = nullptr;
}

VRDConfiguration* VRDConfiguration::getInstance() {
  if (s_bsingletonVRDConfigurationSet.load(std::memory_order_acquire) == 0) createStore();
  if (s_btempPathSet.load(std::memory_order_acquire) == 0) handOnTempPath();
  return g_singletonVRDConfiguration;
}

VRDCFGAPI_ErrorState VRDConfiguration::init() {
  return _init(static_cast<IBJBufferedInputStream*>(nullptr));
}

VRDCFGAPI_ErrorState VRDConfiguration::init(IBJBufferedInputStream& stream) {
  return _init(&stream);
}

VRDCFGAPI_ErrorState VRDConfiguration::init(VRDIDOM_Element& element) { return _init(&element); }
