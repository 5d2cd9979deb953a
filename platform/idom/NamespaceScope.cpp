#include "platform/idom/NamespaceScope.h"

#include <algorithm>
#include <utility>

std::size_t NamespaceScope::open() { return std::exchange(m_here, m_bindings.size()); }

void NamespaceScope::close(std::size_t outerElement) {
  m_bindings.resize(m_here);
  m_here = outerElement;
}

const NamespaceScope::Binding* NamespaceScope::find(std::u16string_view prefix) const {
  const auto found = std::find_if(m_bindings.rbegin(), m_bindings.rend(),
                                  [&](const Binding& each) { return each.prefix == prefix; });
  return found == m_bindings.rend() ? nullptr : &*found;
}

std::u16string_view NamespaceScope::prefixOf(std::u16string_view uri) const {
  const auto found = std::find_if(m_bindings.rbegin(), m_bindings.rend(), [&](const Binding& each) {
    return each.uri == uri && !each.prefix.empty() && find(each.prefix) == &each;
  });
  return found == m_bindings.rend() ? std::u16string_view() : found->prefix;
}
