#pragma once

#include <cstddef>
#include <string_view>
#include <unordered_map>

#include "platform/core/I18NString.h"
#include "platform/idom/VRDIDOM_Element.h"
#include "platform/idom/VRDIDOM_Helper.h"
#include "store/VRDConfiguration.h"

/// What reads need of a parameter. Found when it enters the table: nothing changes the marks of an
/// element that is there.
struct ParameterValue {
  VRDIDOM_Element element;  // the "value" child
  bool isOpaque;            // XML and not text
  bool isEncrypted;         // a text that is stored encrypted
};

/// A parameter of the table, with what reads need of it.
struct IndexedParameter {
  VRDIDOM_Element* element;  // in the table
  ParameterValue value;
  I18NString text{};                 // a copy of the value's text, as of its generation
  unsigned long textGeneration = 0;  // older than any: there is no copy

  /// Puts another element, with its value, in the place of this one.
  void become(const VRDIDOM_Element& otherElement, const ParameterValue& itsValue) noexcept {
    *element = otherElement;
    value = itsValue;
    forgetText();
  }

  /// To be called before the value's text changes.
  void forgetText() noexcept { textGeneration = 0; }
};

/// The way into the parameter table for reads by name: one step to a parameter's value, however
/// many parameters there are, and from its second reading on none into the tree. Holds what was
/// added, which must stay in its table, in the place it has.
class ParameterIndex {
 public:
  /// Null if there is no parameter of that name.
  IndexedParameter* find(const I18NString& name) {
    const auto entry = m_parameters.find(name.utf8());
    return entry == m_parameters.end() ? nullptr : &entry->second;
  }

  /// Gives the text of a plain value.
  void getText(IndexedParameter& parameter, I18NString& text) {
    if (parameter.textGeneration == m_textGeneration) {
      text = parameter.text;
      return;
    }
    VRDIDOM_Helper::getElementText(parameter.value.element, text);
    if (text.utf8().size() > longestTextKept) return;
    parameter.text = text;
    parameter.textGeneration = m_textGeneration;
  }

  /// To be called before texts of the tree change.
  void forgetTexts() noexcept { ++m_textGeneration; }

  /// Makes room for @p count parameters.
  void reserve(std::size_t count) { m_parameters.reserve(count); }

  /// @param entry of the table, with a name that is not here yet
  void add(VRDConfiguration::ParameterTable::value_type& entry, const ParameterValue& value) {
    m_parameters.insert({entry.first.utf8(), {&entry.second, value}});
  }

  void clear() { m_parameters.clear(); }

 private:
  // Copying a long text takes longer than finding it, and it would stand in memory twice.
  static constexpr std::size_t longestTextKept = 1024;

  unsigned long m_textGeneration = 1;
  // The names are the table's own.
  std::unordered_map<std::string_view, IndexedParameter> m_parameters;
};
