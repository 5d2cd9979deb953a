#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// An attribute as it stands in a document. All texts are UTF-8.
struct LocatedAttribute {
  std::string namespaceUri;
  std::string localName;
  std::string qualifiedName;
  std::string value;
};

/// An element with its place. Line and column are counted from 1 and point at its "<"; the offsets
/// are those of bytes in `LocatedDocument::bytes`.
struct LocatedElement {
  std::string namespaceUri;
  std::string localName;
  std::string qualifiedName;
  std::vector<LocatedAttribute> attributes;
  std::vector<LocatedElement> children;
  std::string text;  ///< Its own text, joined.
  unsigned long line = 0;
  unsigned long column = 0;
  std::size_t tagBegin = 0;    ///< The "<" of the start tag.
  std::size_t tagEnd = 0;      ///< Behind the ">" of the start tag.
  std::size_t contentEnd = 0;  ///< The "<" of the end tag; `tagEnd` if there is none.

  bool isNamed(std::string_view uri, std::string_view local) const;
  /// By qualified name; null if it is absent.
  const std::string* attribute(std::string_view name) const;
  /// The first child of that qualified name; null if there is none.
  const LocatedElement* child(std::string_view name) const;
  /// The value of `xsi:type`, or an empty text.
  std::string type() const;
  /// Whether the attribute is there and says "true", in whatever case.
  bool says(std::string_view name) const;
};

/// What stands in an XML file and where: for tools that must point at a place or change it. The
/// library's own trees know no places.
class LocatedDocument {
 public:
  /// Parses @p content by the library's rules: what the library refuses is refused here, with the
  /// same words.
  explicit LocatedDocument(std::string content);

  bool parsed() const { return m_errorText.empty(); }
  const LocatedElement& root() const { return m_root; }
  /// The text that the offsets count in: the content, or its UTF-8 form if it is UTF-16.
  const std::string& bytes() const { return m_bytes; }
  /// Bytes of this form as a file in the encoding of the content.
  std::string encoded(const std::string& bytes) const;

  /// @name What went wrong, if it did not parse
  /// @{
  const std::string& errorText() const { return m_errorText; }
  unsigned long errorLine() const { return m_errorLine; }
  unsigned long errorColumn() const { return m_errorColumn; }
  /// @}

 private:
  bool parseAsLibrary(const std::string& content);
  void locate();

  std::string m_bytes;
  const char* m_utf16 = nullptr;  // the encoding's name, if the content is UTF-16
  LocatedElement m_root;
  std::string m_errorText;
  unsigned long m_errorLine = 0;
  unsigned long m_errorColumn = 0;
};
