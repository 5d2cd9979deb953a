#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

/// What prefixes mean while a tree is written: the declarations of the open elements, those further
/// in hiding those further out. The empty prefix is the default namespace, the empty namespace
/// none. Prefixes and namespaces are views, which must outlive the scope.
class NamespaceScope {
 public:
  struct Binding {
    std::u16string_view prefix;
    std::u16string_view uri;
  };

  /// Begins an element. Gives what `close` takes at its end.
  std::size_t open();
  void close(std::size_t outerElement);

  /// What @p prefix means here; null if nothing says so.
  const Binding* find(std::u16string_view prefix) const;
  /// Whether it is the innermost element itself that says so; @p found comes from `find`.
  bool isHere(const Binding* found) const {
    return found != nullptr && found >= m_bindings.data() + m_here;
  }
  /// A prefix, not the empty one, that means @p uri here; an empty view if there is none.
  std::u16string_view prefixOf(std::u16string_view uri) const;

  void bind(std::u16string_view prefix, std::u16string_view uri) {
    m_bindings.push_back({prefix, uri});
  }

 private:
  std::vector<Binding> m_bindings;  // outermost first
  std::size_t m_here = 0;           // first of the innermost element
};
