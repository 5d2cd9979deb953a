#pragma once

#include "platform/core/I18NLocale.h"
#include "platform/core/I18NString.h"
#include "platform/core/VRDExport.h"

/// A time zone, named by its id, such as "Europe/Paris". A value; any number of threads may read
/// one object. Throws only what `I18NString` does.
class VRD_EXPORT I18NTimeZone {
 public:
  /// Any id is taken; case counts. One that nobody knows is shown as Greenwich Mean Time is.
  explicit I18NTimeZone(const I18NString& id);

  /// All time zones there are, made at the first call.
  /// @param count receives their number
  /// @return the first of them; the table stays as long as the process
  static const I18NTimeZone* getAvailableTimeZones(int& count);

  /// Puts the id, as it was given, into @p out.
  void getID(I18NString& out) const;

  /// Puts the long name of the zone's standard time in the language of @p inLocale into @p out:
  /// "Central European Standard Time". A zone without a name in that language is shown by its
  /// offset.
  void getDisplayName(I18NString& out, const I18NLocale& inLocale) const;

 private:
  I18NString m_id;
};
