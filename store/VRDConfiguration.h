#pragma once

#include <map>
#include <memory>

#include "foundation/VRDCFGAPI_ErrorState.h"
#include "platform/core/I18NString.h"
#include "platform/core/IBJInputStream.h"
#include "platform/core/ThreadAnnotations.h"
#include "platform/core/VRDExport.h"
#include "platform/core/VRDThreads.h"
#include "platform/idom/VRDIDOM_Document.h"
#include "platform/idom/VRDIDOM_Element.h"
#include "platform/idom/VRDIDOM_Node.h"

class ParameterIndex;
struct IndexedParameter;
struct ParameterValue;

/// The configuration store of the process: the effective parameter tree, and a table of its
/// parameters by name.
///
/// Start with `getInstance()`; no other call is needed before `getValue`.
///
/// A value comes from the source that stands last in this list:
///   1. the runtime defaults;
///   2. the startup document `../configuration/zanstartup.xml` or, if it is missing or does not
///      parse, the startup defaults, which never displace a runtime default;
///   3. query results given to `init`, and `setValue`, in the order of their calls.
///
/// Operations report failure by their state and throw nothing, except where one says so. Any thread
/// may call any operation at any time; whatever reads or changes tree and table does so under one
/// lock. Only the destructor needs the store to itself. The locks of the library are taken in this
/// order: `g_singletonVRDConfigurationLock`, then `m_lock`, then `m_mutexDirPath`.
class VRD_EXPORT VRDConfiguration {
 public:
  /// The parameters by name, in key order. An element stands in the effective tree, or in no tree
  /// at all if `setValue` made it.
  using ParameterTable = std::map<I18NString, VRDIDOM_Element>;

  /// A store without a document and with an empty table. Clients use `getInstance`.
  VRDConfiguration();
  VRDConfiguration(const VRDConfiguration&) = delete;
  VRDConfiguration& operator=(const VRDConfiguration&) = delete;
  /// Ends the crypto session, if there is one. The library never destroys the store of the process;
  /// who does so must know that nobody else uses it. The next `getInstance` makes a new one, which
  /// does not read the startup document again. The end of any store, also of one that was made
  /// beside the process's, makes the process forget the one it has.
  ~VRDConfiguration();

  /// The store of the process, never null. The first call makes it, loads the configuration and
  /// hands the parameter "temp" on to `VRDFmDir::setTempPath`. How the load went is not told here:
  /// `init()` and `getConfigDoc` tell. Throws what memory exhaustion or `VRDFmDir::setTempPath`
  /// throws; the next call then tries again to make the store, and not to set the path.
  static VRDConfiguration* getInstance();

  /// @name Loading
  /// What `init` gives, and what stands then:
  ///
  /// - 0: done, also for a startup document that is missing or bad; the new configuration.
  /// - 4: the startup document has another root, which is told once; the runtime defaults.
  /// - 5: the stream does not parse; what stood before.
  /// - 9: an exception, or an "advancedSettings" that does not parse; what was done before it.
  /// @{

  /// Loads what has not been loaded yet; else does nothing.
  VRDCFGAPI_ErrorState init();
  /// Loads, then takes in the query results in the document that @p stream holds.
  VRDCFGAPI_ErrorState init(IBJBufferedInputStream& stream);
  /// Loads, then takes in @p element if it is a query result, or every one below it. A null handle
  /// gives none.
  VRDCFGAPI_ErrorState init(VRDIDOM_Element& element);

  /// What `init` does; null stands for nothing to take in.
  VRDCFGAPI_ErrorState _init(IBJBufferedInputStream* stream);
  VRDCFGAPI_ErrorState _init(VRDIDOM_Element* element);

  /// Reads the startup document into @p document and removes what is disabled.
  /// @param document a document, which is replaced by the one read
  /// @return 0; 1 if the file is missing or its owner may not read it; 3 if it does not parse or
  ///         cannot be opened; 10 if @p document is null. The root may be any element. Takes no
  ///         lock of the store; what the layers below throw passes through.
  static VRDCFGAPI_ErrorState getConfigDoc(VRDIDOM_Document& document);

  /// Takes in the parameters of one query result. For `_init`, under the store's lock.
  void _scanParametersHelper(VRDIDOM_Node& queryResult, VRDIDOM_Element& root) VRD_REQUIRES(m_lock);
  /// Applies the settings in an "advancedSettings" value. For `_init`, under the store's lock.
  void _scanAdvancedSettingsHelper(VRDIDOM_Element& value) VRD_REQUIRES(m_lock);
  /// @}

  /// @name Values
  /// The decrypt flag: not 0 asks for clear text, 0 for what the tree holds. The tree itself always
  /// keeps the stored form. An empty name stands for the whole tree.
  ///
  /// | state | meaning                                                      |
  /// |-------|--------------------------------------------------------------|
  /// | 0     | done, also for an unknown name                               |
  /// | 7     | something was to be decrypted and there is no crypto session |
  /// | 8     | decryption gave nothing                                      |
  /// | 9     | an exception                                                 |
  /// @{

  /// The text of a parameter: bare for a plain value, XML (the value element with its namespace
  /// declarations) for an opaque one and for the whole tree.
  /// @param result empty for an unknown name and in every state but 0
  VRDCFGAPI_ErrorState getValue(const I18NString& name, const int& decrypt, I18NString& result);

  /// A copy of a parameter's value element, or of the whole tree, in a document of its own. A value
  /// that is marked itself as encrypted stays in its stored form; what lies below it is decrypted.
  /// @param result untouched for an unknown name and in every state but 0
  VRDCFGAPI_ErrorState getValue(const I18NString& name, const int& decrypt, VRDIDOM_Node& result);

  /// Gives a parameter a plain value of the table's own: it is found by name, and neither the whole
  /// tree nor a rewriting of it sees it. An empty name or value changes nothing.
  /// @return 0 or 9; after 9 the old value stands
  VRDCFGAPI_ErrorState setValue(const I18NString& name, const I18NString& value);

  /// Makes a path that is relative to the installation's "bin" directory absolute, in place; finds
  /// the installation first if that has not happened. Throws as `determineBinDir` does.
  /// @return @p path
  I18NString& resolveEffectivePath(I18NString& path);
  /// @}

  /// @name Rewriting of a tree, in place
  /// A path value is a "value" element whose `xsi:type` is exactly "cfg:folderPath" or
  /// "cfg:filePath". These need no store and take no lock; the tree must be the caller's. What the
  /// layers below throw passes through, with the elements before it rewritten.
  /// @{

  /// Replaces environment references in all path values below @p root.
  static void replaceVariables(VRDIDOM_Element& root);
  /// Makes all path values below @p root absolute that hold text and no "%".
  static void fixupPaths(VRDIDOM_Element& root);
  /// Replaces each reference %NAME% whose variable is set. The search goes on five characters
  /// behind the start of a replaced reference. A text in which replacing would not end (more than
  /// 1,000 times, or past 1 MiB) is returned as it was given.
  static I18NString replaceEnvVariables(I18NString text);
  /// Removes @p element from its parent if it is disabled, else every disabled parameter,
  /// instances, instance and value below it that is reached through such elements.
  /// @param index of the element in its parent's list; lowered by one when the element goes, as the
  ///        sibling behind it moves up
  static void removeDisabledElements(VRDIDOM_Element& element, unsigned long& index);
  /// @}

  /// Finds the installation's "bin" directory and makes it the effective working directory of
  /// `VRDFmDir`. Runs once a process, also when nothing is found. For want of memory it throws
  /// `VRDOutOfMemoryError` or `std::bad_alloc`; the next call then starts again.
  static void determineBinDir();

  /// The handle of the crypto session, opened at the first call; null if there is none. Under the
  /// store's lock.
  void* getCryptoHandle() VRD_REQUIRES(m_lock);

  /// The store, once it is made. `getInstance` is the way to it.
  static VRDConfiguration* g_singletonVRDConfiguration;

 private:
  friend class VRDConfigurationImpl;  // lists the names of the table

  // Loading.
  void beginTree() VRD_REQUIRES(m_lock);
  void addDefaults(const char* const* (*defaults)()) VRD_REQUIRES(m_lock);
  VRDCFGAPI_ErrorState loadStartup() VRD_REQUIRES(m_lock);
  void mergeStartup(VRDIDOM_Document& startup) VRD_REQUIRES(m_lock);
  class Merged;
  void copyTreeTo(VRDIDOM_Document& document, VRDIDOM_Element& root, Merged& merged)
      VRD_REQUIRES(m_lock);
  void rewriteTree() VRD_REQUIRES(m_lock);
  void scan(VRDIDOM_Element& element) VRD_REQUIRES(m_lock);
  void scanParameter(VRDIDOM_Element& source, VRDIDOM_Element& root) VRD_REQUIRES(m_lock);

  // Parameters as elements.
  VRDIDOM_Element makeParameter(VRDIDOM_Document& document, const I18NString& name);
  VRDIDOM_Element makePlainParameter(const I18NString& name, const I18NString& text)
      VRD_REQUIRES(m_lock);
  ParameterValue valueOf(VRDIDOM_Element& parameter);
  ParameterValue startupValueOf(VRDIDOM_Element& child);
  void append(VRDIDOM_Element& root, const I18NString& name, const VRDIDOM_Element& parameter)
      VRD_REQUIRES(m_lock);
  void insert(const I18NString& name, VRDIDOM_Element parameter) VRD_REQUIRES(m_lock);

  // Values.
  VRDCFGAPI_ErrorState readText(const I18NString& name, int decrypt, I18NString& text)
      VRD_REQUIRES(m_lock);
  VRDCFGAPI_ErrorState readNode(const I18NString& name, int decrypt, VRDIDOM_Node& result)
      VRD_REQUIRES(m_lock);
  VRDCFGAPI_ErrorState readXml(VRDIDOM_Element element, int decrypt, I18NString& text)
      VRD_REQUIRES(m_lock);
  VRDCFGAPI_ErrorState readPlain(IndexedParameter& parameter, int decrypt, I18NString& text)
      VRD_REQUIRES(m_lock);
  VRDCFGAPI_ErrorState toDecryptedCopy(VRDIDOM_Element& element) VRD_REQUIRES(m_lock);

  ParameterTable m_parameters VRD_GUARDED_BY(m_lock);
  VRDIDOM_Document m_configDoc VRD_GUARDED_BY(m_lock);
  void* m_cryptoHandle VRD_GUARDED_BY(m_lock) = nullptr;
  VRDThreadRecursiveCriticalSection m_lock;
  // The vocabulary: set by the constructor, never changed.
  std::unique_ptr<const I18NString> m_namespaceUri;
  std::unique_ptr<const I18NString> m_parametersQName;
  std::unique_ptr<const I18NString> m_parametersLocalName;
  std::unique_ptr<const I18NString> m_parameterQName;
  std::unique_ptr<const I18NString> m_parameterLocalName;
  std::unique_ptr<const I18NString> m_valueQName;
  std::unique_ptr<const I18NString> m_valueLocalName;
  std::unique_ptr<const I18NString> m_nameAttribute;
  std::unique_ptr<const I18NString> m_encryptedAttribute;
  // Beside the table and in step with it: reads by name are what the store is asked most.
  std::unique_ptr<ParameterIndex> m_index VRD_PT_GUARDED_BY(m_lock);
  // The tree changed and memory ended before its paths were rewritten: the next `_init` does that.
  bool m_isRewriteDue VRD_GUARDED_BY(m_lock) = false;
};
