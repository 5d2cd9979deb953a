#pragma once

#include <list>
#include <map>

#include "platform/core/I18NString.h"
#include "platform/core/IBJInputStream.h"
#include "platform/core/VRDExport.h"
#include "platform/idom/VRDIDOM_Element.h"

/// The configuration of the installation, as clients ask for it: parameters, locales, time zones,
/// currencies, fonts and component versions.
///
/// Start with `VRDConfigurationFactory::getInstance()` and ask; nothing has to be called before.
///
/// **What it holds.** Parameters are those of the process-wide store, so all service objects answer
/// alike. Locale, currency, font and component tables belong to the object: each is read from its
/// file at the first question that needs it, and a later change of the file is seen by new objects
/// only.
///
/// **Results** are the caller's own: changing one changes no later answer.
///
/// **Locale texts** come in any loose form (blanks around, "_" for "-", upper case, more behind the
/// region) where an operation says that it normalises.
///
/// **Failures.** `VRDConfigurationException`, severity 1, with a `VRDCFGAPI_ErrorState` as its
/// code. A file that is missing or does not parse is reported once for each object: to the first
/// question that needs it (11 and 12 for the locale document, 14 for the component list). The
/// tables it should have filled are empty from then on. Exhausted memory throws
/// `VRDOutOfMemoryError`, or `std::bad_alloc` as the layers below do.
///
/// **Threads.** Any number of threads may use one object, while another runs `init` on it too: each
/// answer then comes from the tables before or behind that change, never from half of one.
class VRD_EXPORT IVRDConfiguration {
 public:
  /// @name Initialisation
  /// Throws 5 if a stream does not parse, and nothing has changed then; 9 for an exception in the
  /// store, and what was done before it stays. A startup document that is missing or bad is no
  /// failure here: `VRDStartupConfiguration` tells of it.
  /// @{

  /// Loads the installation's startup document, unless that has happened. Replaces no table.
  virtual void init() = 0;
  /// Takes in the query results that @p stream holds, then replaces the tables of this object for
  /// which the store has a parameter: "supportedProductLocales", "productLocaleMap",
  /// "supportedContentLocales", "contentLocaleMap", "supportedCurrencies", "supportedFonts".
  /// Other service objects keep the tables they have.
  virtual void init(IBJBufferedInputStream& stream) = 0;
  /// The same with the query results below @p element, which stays as it is.
  virtual void init(VRDIDOM_Element& element) = 0;
  /// @}

  /// @name Parameters
  /// An unknown name is no failure and gives an empty text or a null element; an empty name stands
  /// for the whole configuration. @p decrypt: not 0 asks for clear text, 0 for the stored form.
  /// Throws 7 if something must be decrypted and there is no crypto session, 8 if decryption gives
  /// nothing, 9 for an exception in the store.
  /// @{

  /// The names of all parameters, in the order of their code points.
  virtual std::list<I18NString> getParameterNames() = 0;
  /// The text of a parameter: bare for a plain value, XML for an opaque one.
  virtual I18NString getValue(const I18NString& name, int decrypt) = 0;
  /// A copy of the value element, in a document of its own.
  virtual VRDIDOM_Element getValueElement(const I18NString& name, int decrypt) = 0;
  /// @}

  /// @name Localised lists
  /// All codes of a list with their names in the language of @p locale, which is normalised; an
  /// empty text stands for "en". A code or language that nobody knows is no failure: its name is
  /// what the locale services make of it. Names are computed at the first request for a language
  /// and kept as long as the object lives, without a limit.
  /// @{
  virtual std::map<I18NString, I18NString> getProductLocaleList(const I18NString& locale) = 0;
  virtual std::map<I18NString, I18NString> getContentLocaleList(const I18NString& locale) = 0;
  /// Needs no file of the installation.
  virtual std::map<I18NString, I18NString> getTimeZones(const I18NString& locale) = 0;
  /// @}

  /// Always an empty text.
  virtual I18NString exportToCM() = 0;

  /// @name Locales
  /// @{

  /// Whether @p locale is supported: 1 or 0. It is taken as it stands: anything but two lower-case
  /// letters, or two and "-" and two, gives 0. The old codes "in" and "iw" are looked for as "id"
  /// and "he".
  virtual int validateProductLocale(const I18NString& locale) = 0;
  virtual int validateContentLocale(const I18NString& locale) = 0;

  /// The canonical form: without blanks around, cut to five characters, "-" for "_", in lower case.
  /// Says nothing about the result being a locale.
  virtual I18NString normalizeLocale(const I18NString& locale) = 0;

  /// The locale to use for @p locale. The first of these that the mapping table has decides:
  ///   1. the locale itself
  ///   2. the locale with "-*" behind it, if it holds no "-"
  ///   3. its first three characters with "*" behind them: the language pattern
  ///   4. "*"
  ///   5. else the parameter "serverLocale": its language here, its language and region in
  ///      `mapContentLocale`.
  /// @param normalize not 0: normalise @p locale first
  /// Throws 13, with @p locale in its message, if that gives nothing, or if @p locale has fewer
  /// than two characters.
  virtual I18NString mapProductLocale(const I18NString& locale, int normalize) = 0;
  virtual I18NString mapContentLocale(const I18NString& locale, int normalize) = 0;
  /// @}

  /// Makes a path that is relative to the installation's "bin" directory absolute, in place.
  /// @return @p path
  virtual I18NString& resolveEffectivePath(I18NString& path) = 0;

  /// Currency codes with their descriptions; a localised list as told above.
  virtual std::map<I18NString, I18NString> getCurrencies(const I18NString& locale) = 0;

  /// @name Fonts
  /// @{

  /// The supported fonts, in the order of their source, whatever the argument is.
  virtual std::list<I18NString> getFonts(const I18NString& locale) = 0;
  /// Puts the font to use in the place of @p font; one without a mapping stays. One step only.
  /// @return @p font
  virtual I18NString& mapFont(I18NString& font) = 0;
  /// The fonts that have one, each with the font to use instead.
  virtual std::map<I18NString, I18NString> getFontMappings() = 0;
  /// @}

  /// @name Dispatchers
  /// Whether the parameter "internalDispatcher" or "externalDispatcher" begins with "https": 1 or
  /// 0. Throws what `init()` and `getValue` throw.
  /// @{
  virtual int isInternalSSL() = 0;
  virtual int isExternalSSL() = 0;
  /// @}

  /// The version of an installed component, or an empty text. The name is compared exactly.
  virtual I18NString getComponentVersion(const I18NString& component) = 0;

  /// Always an empty text.
  virtual I18NString getValue(const I18NString& name, int decrypt, int reserved) = 0;
  /// Always a null element.
  virtual VRDIDOM_Element getValueElement(const I18NString& name, int decrypt, int reserved) = 0;

  /// For `VRDConfigurationFactory::releaseObject`. Nobody may be using the object.
  virtual ~IVRDConfiguration();

 protected:
  IVRDConfiguration() = default;
  IVRDConfiguration(const IVRDConfiguration&) = default;
  IVRDConfiguration& operator=(const IVRDConfiguration&) = default;
};
