#pragma once

#include <string_view>
#include <unordered_map>

#include "platform/core/I18NString.h"
#include "platform/idom/VRDIDOM_Element.h"
#include "store/VRDConfiguration.h"

/// What reads need of a parameter. Found when it enters the table: nothing changes the marks of an
/// element that is there.
struct ParameterValue {
  VRDIDOM_Element element;  // the "value" child
  bool isOpaque;            // XML and not text
  bool isEncrypted;         // a text that is stored encrypted
};

/// The way into the parameter table for reads by name: one step to a parameter's value, however
/// many parameters there are. Holds what was added, which must stay in its table, in the place it
/// has.
class ParameterIndex {
 public:
  struct Parameter {
    VRDIDOM_Element* element;  // in the table
    ParameterValue value;

    /// Puts another element, with its value, in the place of this one.
    void become(const VRDIDOM_Element& otherElement, const ParameterValue& itsValue) noexcept {
      *element = otherElement;
      value = itsValue;
    }
  };

  /// Null if there is no parameter of that name.
  Parameter* find(const I18NString& name) {
    const auto entry = m_parameters.find(name.utf8());
    return entry == m_parameters.end() ? nullptr : &entry->second;
  }

  /// @param entry of the table, with a name that is not here yet
  void add(VRDConfiguration::ParameterTable::value_type& entry, const ParameterValue& value) {
    m_parameters.insert({entry.first.utf8(), {&entry.second, value}});
  }

  void clear() { m_parameters.clear(); }

 private:
  // The names are the table's own.
  std::unordered_map<std::string_view, Parameter> m_parameters;
};
