#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "platform/core/I18NString.h"
#include "platform/core/VRDExport.h"

/// Anything that can be added to a `VRDMessageSet`. The set keeps a copy of it.
/// Messages are values: any number of threads may read one, a change needs it to itself.
class VRD_EXPORT VRDMessageBase {
 public:
  virtual ~VRDMessageBase();
  /// A copy under its own type; the caller owns it.
  virtual std::unique_ptr<VRDMessageBase> clone() const = 0;
  /// The message for a person. Without a catalogue text: catalogue, number and parameters.
  virtual I18NString getText() const = 0;

 protected:
  VRDMessageBase() = default;
  VRDMessageBase(const VRDMessageBase&) = default;
  VRDMessageBase& operator=(const VRDMessageBase&) = default;
};

/// One text parameter of a message.
class VRD_EXPORT VRDMessageParm {
 public:
  /// @param text goes into the message as it is; the caller sees to it that it is no secret
  explicit VRDMessageParm(const I18NString& text);
  const I18NString& getText() const { return m_text; }

 private:
  I18NString m_text;
};

/// A message that takes parameters.
class VRD_EXPORT VRDMessageComponents : public VRDMessageBase {
 public:
  ~VRDMessageComponents() override;
  /// Appends a parameter. Returns this message, ready to be added to a set.
  VRDMessageComponents& operator<<(const VRDMessageParm& parm);

  std::size_t getParmCount() const { return m_parms.size(); }
  /// Parameter @p index, in the order of appending. @p index must be below the count.
  const VRDMessageParm& getParmAt(std::size_t index) const { return m_parms[index]; }

 protected:
  VRDMessageComponents() = default;
  VRDMessageComponents(const VRDMessageComponents&) = default;
  VRDMessageComponents& operator=(const VRDMessageComponents&) = default;

 private:
  std::vector<VRDMessageParm> m_parms;
};

/// One message of a catalogue, named by the catalogue and a number. Its text comes from the files
/// that were installed with the library, in the language that LC_ALL, LC_MESSAGES or LANG names, or
/// in English; the locale that the process has set does not matter. Any pair of catalogue and
/// number is taken: whether there is such a message shows when its text is asked for.
class VRD_EXPORT VRDMessage : public VRDMessageComponents {
 public:
  /// Without parameters. Nothing is looked up before `getText`.
  /// @param catalogue a name, not a path
  VRDMessage(const I18NString& catalogue, unsigned long number);
  VRDMessage(const VRDMessage&) = default;
  VRDMessage& operator=(const VRDMessage&) = default;
  ~VRDMessage() override;

  std::unique_ptr<VRDMessageBase> clone() const override;
  I18NString getText() const override;

  const I18NString& getCatalogue() const { return m_catalogue; }
  unsigned long getNumber() const { return m_number; }

 private:
  I18NString m_catalogue;
  unsigned long m_number;
};
