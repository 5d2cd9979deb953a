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
  bool hasPaths;            // values that are rewritten, in it or at any depth below
};

/// A parameter of the table, with what reads need of it.
struct IndexedParameter {
  VRDIDOM_Element* element;  // in the table
  ParameterValue value;
  I18NString text{};  // what a plain value holds, if it was kept
  bool isTextKept = false;

  /// Gives the text of a plain value, and keeps it: only the first read goes into the tree.
  void getText(I18NString& result) {
    if (isTextKept) {
      result = text;
      return;
    }
    VRDIDOM_Helper::getElementText(value.element, result);
    if (result.utf8().size() > longestTextKept) return;
    text = result;
    isTextKept = true;
  }

  /// To be called before the value's text changes.
  void forgetText() noexcept { isTextKept = false; }

  /// Puts another element, with its value, in the place of this one.
  void become(const VRDIDOM_Element& otherElement, const ParameterValue& itsValue) noexcept {
    *element = otherElement;
    value = itsValue;
    forgetText();
  }

  // Copying a long text takes longer than finding it, and it would stand in memory twice.
  static constexpr std::size_t longestTextKept = 1024;
};

/// The way into the parameter table for reads by name: one step to a parameter, however many there
/// are. Holds what was added, which must stay in its table, in the place it has.
class ParameterIndex {
 public:
  /// Null if there is no parameter of that name.
  IndexedParameter* find(const I18NString& name) {
    const auto entry = m_parameters.find(name.utf8());
    return entry == m_parameters.end() ? nullptr : &entry->second;
  }

  /// Calls @p visit for each parameter, in no order.
  template <class Visit>
  void visitAll(Visit visit) {
    for (auto& entry : m_parameters) visit(entry.second);
  }

  /// Makes room for @p count parameters.
  void reserve(std::size_t count) { m_parameters.reserve(count); }

  /// @param entry of the table, with a name that is not here yet
  void add(VRDConfiguration::ParameterTable::value_type& entry, const ParameterValue& value) {
    m_parameters.insert({entry.first.utf8(), {&entry.second, value}});
  }

  /// Takes over what @p other holds under names that are not here yet; its entries follow it into
  /// this one's table. Or throws and changes nothing.
  void merge(ParameterIndex& other) {
    m_parameters.reserve(m_parameters.size() + other.m_parameters.size());
    m_parameters.merge(other.m_parameters);
  }

  void clear() { m_parameters.clear(); }

 private:
  // The names are the table's own.
  std::unordered_map<std::string_view, IndexedParameter> m_parameters;
};
