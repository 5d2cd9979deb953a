#pragma once

#include <list>
#include <map>
#include <memory>
#include <string>

#include "foundation/VRDCFGAPI_ErrorState.h"
#include "platform/core/I18NLocale.h"
#include "platform/core/I18NString.h"
#include "platform/core/VRDThreads.h"
#include "platform/idom/VRDIDOM_DOMImplementation.h"
#include "platform/idom/VRDIDOM_Document.h"
#include "platform/idom/VRDIDOM_Element.h"
#include "service/ComponentVersions.h"
#include "service/IVRDConfiguration.h"
#include "service/LocaleTableSources.h"
#include "service/ServiceTable.h"

/// The service object: a view on the store, with tables of its own.
///
/// What it answers from:
///   - parameters: the store, asked afresh each time, without a lock of this class
///   - locale, currency and font tables: the locale document at first use, until `init` with an
///     argument meets a parameter that replaces one
///   - time zones: the locale services
///   - component versions: the component list
///
/// Lock order: a table mutex, then `g_localeDocMutex` or the store's locks. No two table mutexes
/// are held together. Tables are read without a lock, names in a cache under the mutex of its list.
class VRDConfigurationImpl final : public IVRDConfiguration {
 public:
  using TextList = std::list<I18NString>;
  using TextMap = std::map<I18NString, I18NString>;
  /// Names by the locale that they are in, which is in canonical form. What is in it never changes.
  using NameCache = std::map<I18NString, std::shared_ptr<const TextMap>>;

  /// What the codes of a localised list are.
  enum class CodeKind : int { Locale = 1, TimeZone = 2, Currency = 3 };

  VRDConfigurationImpl();
  ~VRDConfigurationImpl() override;
  VRDConfigurationImpl(const VRDConfigurationImpl&) = delete;
  VRDConfigurationImpl& operator=(const VRDConfigurationImpl&) = delete;

  void init() override;
  void init(IBJBufferedInputStream& stream) override;
  void init(VRDIDOM_Element& element) override;
  TextList getParameterNames() override;
  I18NString getValue(const I18NString& name, int decrypt) override;
  VRDIDOM_Element getValueElement(const I18NString& name, int decrypt) override;
  TextMap getProductLocaleList(const I18NString& locale) override;
  TextMap getContentLocaleList(const I18NString& locale) override;
  TextMap getTimeZones(const I18NString& locale) override;
  I18NString exportToCM() override;
  int validateProductLocale(const I18NString& locale) override;
  int validateContentLocale(const I18NString& locale) override;
  I18NString normalizeLocale(const I18NString& locale) override;
  I18NString mapProductLocale(const I18NString& locale, int normalize) override;
  I18NString mapContentLocale(const I18NString& locale, int normalize) override;
  I18NString& resolveEffectivePath(I18NString& path) override;
  TextMap getCurrencies(const I18NString& locale) override;
  TextList getFonts(const I18NString& locale) override;
  I18NString& mapFont(I18NString& font) override;
  TextMap getFontMappings() override;
  int isInternalSSL() override;
  int isExternalSSL() override;
  I18NString getComponentVersion(const I18NString& component) override;
  I18NString getValue(const I18NString& name, int decrypt, int reserved) override;
  VRDIDOM_Element getValueElement(const I18NString& name, int decrypt, int reserved) override;

  /// Replaces the tables for which the store has a parameter. What a failure finds replaced stays
  /// so.
  void reloadGlobalConfiguration();
  void reloadProductLocales();
  void reloadContentLocales();
  void reloadCurrencies();
  void reloadFonts();

  /// Nothing is exported in these forms.
  void exportMap(TextMap& map, VRDIDOM_Element& element);
  void exportList(TextList& list, VRDIDOM_Element& element, const I18NString& name);

  /// Brings a locale text to its canonical form, in place. Never fails.
  static void normalizeLocaleHelper(I18NString& locale);
  /// Whether the text has the shape of a canonical locale; "*" and digits have no place in one.
  static int validateLocaleHelper(const I18NString& locale);
  static int containsLocale(const TextList* locales, const I18NString& locale);

  /// Reads the locale document into @p document.
  /// @return 0; 11 if the file is missing or its owner may not read it; 12 if it does not parse or
  ///         cannot be opened; 10 if @p document is null
  static VRDCFGAPI_ErrorState getLocaleDoc(VRDIDOM_Document& document);

  /// The names of all codes of @p list in the language of @p locale, from @p cache or computed and
  /// put there. For the holder of the lock over both.
  static std::shared_ptr<const TextMap> getListFromMapHelper(const I18NString& locale,
                                                             NameCache* cache, const TextList* list,
                                                             CodeKind kind);

 private:
  /// The locale document of an object: without a root until it is read, and after a failed load.
  struct LocaleDocument {
    VRDIDOM_Document document = VRDIDOM_DOMImplementation::getInstance().createDocument();
  };
  struct LocaleFamily;
  struct LocalisedList;
  static const LocaleFamily productFamily;
  static const LocaleFamily contentFamily;
  static const LocalisedList productLocaleNames;
  static const LocalisedList contentLocaleNames;
  static const LocalisedList timeZoneNames;
  static const LocalisedList currencyNames;

  void initializeProductLocaleMaps();
  void initializeContentLocaleMaps();
  void initializeTimeZones();
  void initializeCurrencies();
  void initializeFonts();
  void initializeComponentMap();

  template <class Content>
  void makeFromDocument(ServiceTable<Content>& table, VRDThreadCriticalSection& lock,
                        const LocaleTableSource& source);
  template <class Content>
  bool replaceFromParameter(ServiceTable<Content>& table, VRDThreadCriticalSection& lock,
                            const LocaleTableSource& source) VRD_REQUIRES(lock);
  void initializeLocaleMaps(const LocaleFamily& family);
  void reloadLocales(const LocaleFamily& family);

  VRDIDOM_Document localeDocument();
  template <class Visit>
  void visitEntries(const I18NString& section, const I18NString& entry, Visit visit);
  void loadList(TextList* list, const I18NString& section, const I18NString& entry);
  void loadMap(TextMap* map, const I18NString& section, const I18NString& entry);
  void loadListFromParam(TextList* list, VRDIDOM_Element& value);
  void loadMapFromParam(TextMap* map, VRDIDOM_Element& value);
  void load(TextList& list, const LocaleTableSource& source);
  void load(TextMap& map, const LocaleTableSource& source);
  void loadFromParam(TextList& list, VRDIDOM_Element& value);
  void loadFromParam(TextMap& map, VRDIDOM_Element& value);

  int validateLocale(const LocaleFamily& family, const I18NString& locale);
  I18NString mapLocale(const LocaleFamily& family, const I18NString& locale, int normalize);
  TextMap namesOf(const LocalisedList& list, const I18NString& locale);
  std::shared_ptr<const TextMap> findNames(const LocalisedList& list, const I18NString& locale);
  int beginsSecure(const I18NString& parameter);

  ServiceTable<TextList> m_productLocales;
  ServiceTable<TextMap> m_productLocaleMapping;
  ServiceTable<NameCache> m_productLocalesMap;
  VRDThreadCriticalSection m_productLocaleMutex;
  ServiceTable<TextList> m_contentLocales;
  ServiceTable<TextMap> m_contentLocaleMapping;
  ServiceTable<NameCache> m_contentLocalesMap;
  VRDThreadCriticalSection m_contentLocaleMutex;
  ServiceTable<TextList> m_timeZones;
  ServiceTable<NameCache> m_timeZonesMap;
  VRDThreadCriticalSection m_timeZoneMutex;
  ServiceTable<TextList> m_currencies;
  ServiceTable<NameCache> m_currenciesMap;
  VRDThreadCriticalSection m_currencyMutex;
  ServiceTable<TextList> m_fonts;
  ServiceTable<TextMap> m_fontMappings;
  VRDThreadCriticalSection m_fontMutex;
  ServiceTable<ComponentVersions> m_componentMap;
  VRDThreadCriticalSection m_componentMutex;
  ServiceTable<LocaleDocument> m_localeDoc;
};

/// The locale of the process for case conversion, the same whatever the process locale is. Made at
/// the first call and never freed.
I18NLocale* getI18NLocale();
