#pragma once

#include <string>
#include <vector>

#include "foundation/VRDCFGAPI_ErrorState.h"
#include "platform/idom/VRDIDOM_Node.h"
#include "tools/Json.h"

/// One parameter as the store answers it.
struct EffectiveParameter {
  std::string name;
  VRDCFGAPI_ErrorState state = VRDCFGAPI_NoError;
  bool known = false;
  std::string text;  ///< Bare, or XML for an opaque one; what is secret in it may be masked.
  std::string type;
  bool opaque = false;
  bool encrypted = false;  ///< It, or something in it, is marked as encrypted.
  bool masked = false;
  bool undecrypted = false;  ///< To be decrypted, and something in it could not be.

  /// "opaque", "encrypted" and so on, for a table.
  std::string marks() const;
  void writeTo(JsonWriter& writer) const;
};

/// What the process answers, for people: secrets are masked unless clear text was asked for.
class EffectiveConfiguration {
 public:
  /// Asks the store for its names.
  /// @param decrypt whether to show secrets, in clear text
  explicit EffectiveConfiguration(bool decrypt);

  /// All names, in key order.
  const std::vector<std::string>& names() const { return m_names; }

  EffectiveParameter read(const std::string& name) const;
  /// The same with the value element as XML, whatever the parameter is.
  EffectiveParameter readXml(const std::string& name) const;
  /// The whole tree, as the text of an unnamed parameter.
  EffectiveParameter readTree() const;

 private:
  EffectiveParameter describe(const std::string& name, VRDIDOM_Node& value) const;
  void readText(EffectiveParameter& parameter) const;
  void showXml(EffectiveParameter& parameter, VRDIDOM_Node& node) const;

  bool m_decrypt;
  std::vector<std::string> m_names;
};
