#pragma once

/// What can go wrong, in one numbering. The store and the startup object return these states; the
/// service raises them as `VRDConfigurationException`.
enum VRDCFGAPI_ErrorState : int {
  VRDCFGAPI_NoError = 0,
  VRDCFGAPI_StartupFileMissing = 1,  ///< The startup document is no readable regular file.
  VRDCFGAPI_Reserved2 = 2,
  VRDCFGAPI_StartupFileParseFailed = 3,  ///< The startup document does not parse.
  VRDCFGAPI_BadRootElement = 4,          ///< The startup document's root is another element.
  VRDCFGAPI_StreamParseFailed = 5,       ///< A stream given to `init` does not parse.
  VRDCFGAPI_Reserved6 = 6,
  VRDCFGAPI_CryptoUnavailable = 7,       ///< A value must be decrypted; there is no crypto session.
  VRDCFGAPI_DecryptFailed = 8,           ///< Decryption gave nothing.
  VRDCFGAPI_InternalError = 9,           ///< An exception ended the operation.
  VRDCFGAPI_NullDocument = 10,           ///< The document handle given is null.
  VRDCFGAPI_LocaleFileMissing = 11,      ///< The locale document is no readable regular file.
  VRDCFGAPI_LocaleFileParseFailed = 12,  ///< The locale document does not parse.
  VRDCFGAPI_LocaleUnmapped = 13,         ///< No mapping exists for a locale.
  VRDCFGAPI_ComponentListMissing = 14,   ///< The component list is no readable regular file.
  VRDCFGAPI_Reserved15 = 15,
  VRDCFGAPI_Reserved16 = 16,
};
