#include "tools/LocatedDocument.h"

#include <memory>
#include <sstream>
#include <utility>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/sax2/Attributes.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "foundation/ConfigurationVocabulary.h"
#include "platform/idom/VRDIDOM_Parser.h"
#include "tools/Text.h"

namespace {

constexpr char utf16LittleEndianMark[] = "\xFF\xFE";
constexpr char utf16BigEndianMark[] = "\xFE\xFF";
constexpr std::size_t utf16MarkSize = 2;

std::string utf8Of(const XMLCh* text) { return bytesOf(I18NString::fromUtf16(text)); }

/// Counts lines and columns on the way through a text; places are asked for in their order.
class PlaceCounter {
 public:
  explicit PlaceCounter(const std::string& bytes) : m_bytes(bytes) {}

  void advanceTo(std::size_t offset) {
    for (; m_offset < offset; ++m_offset) {
      const auto byte = static_cast<unsigned char>(m_bytes[m_offset]);
      if (byte == '\n' || (byte == '\r' && nextByte() != '\n')) {
        ++m_line;
        m_column = 1;
      } else if ((byte & 0xC0) != 0x80) {
        ++m_column;
      }
    }
  }
  unsigned long line() const { return m_line; }
  unsigned long column() const { return m_column; }

 private:
  char nextByte() const { return m_offset + 1 < m_bytes.size() ? m_bytes[m_offset + 1] : '\0'; }

  const std::string& m_bytes;
  std::size_t m_offset = 0;
  unsigned long m_line = 1;
  unsigned long m_column = 1;
};

/// Builds the elements. The reader reports a tag when it has read its ">": the "<" is the nearest
/// one before, since no attribute value can hold one.
class ElementBuilder : public xercesc::DefaultHandler {
 public:
  ElementBuilder(const xercesc::SAX2XMLReader& reader, const std::string& bytes)
      : m_reader(reader), m_bytes(bytes), m_places(bytes) {}

  LocatedElement takeRoot() { return std::move(m_root); }

  void startElement(const XMLCh* uri, const XMLCh* localName, const XMLCh* qualifiedName,
                    const xercesc::Attributes& attributes) override {
    LocatedElement element;
    element.namespaceUri = utf8Of(uri);
    element.localName = utf8Of(localName);
    element.qualifiedName = utf8Of(qualifiedName);
    for (XMLSize_t i = 0; i < attributes.getLength(); ++i) {
      element.attributes.push_back(
          {utf8Of(attributes.getURI(i)), utf8Of(attributes.getLocalName(i)),
           utf8Of(attributes.getQName(i)), utf8Of(attributes.getValue(i))});
    }
    place(element);
    m_open.push_back(std::move(element));
  }

  void endElement(const XMLCh*, const XMLCh*, const XMLCh*) override {
    LocatedElement element = std::move(m_open.back());
    m_open.pop_back();
    const std::size_t end = readSoFar();
    element.contentEnd = end == element.tagEnd ? end : m_bytes.rfind('<', end - 1);
    if (m_open.empty()) {
      m_root = std::move(element);
    } else {
      m_open.back().children.push_back(std::move(element));
    }
  }

  void characters(const XMLCh* text, const XMLSize_t length) override {
    m_open.back().text += bytesOf(I18NString::fromUtf16({text, length}));
  }

 private:
  std::size_t readSoFar() const { return static_cast<std::size_t>(m_reader.getSrcOffset()); }

  void place(LocatedElement& element) {
    element.tagEnd = readSoFar();
    element.tagBegin = m_bytes.rfind('<', element.tagEnd - 1);
    m_places.advanceTo(element.tagBegin);
    element.line = m_places.line();
    element.column = m_places.column();
  }

  const xercesc::SAX2XMLReader& m_reader;
  const std::string& m_bytes;
  PlaceCounter m_places;
  std::vector<LocatedElement> m_open;
  LocatedElement m_root;
};

const char* utf16NameOf(const std::string& content) {
  if (content.compare(0, utf16MarkSize, utf16LittleEndianMark) == 0) return "UTF-16LE";
  if (content.compare(0, utf16MarkSize, utf16BigEndianMark) == 0) return "UTF-16BE";
  return nullptr;
}

std::string decoded(const std::string& content, const char* encoding) {
  return bytesOf(I18NString(content.data() + utf16MarkSize, encoding,
                            static_cast<int>(content.size() - utf16MarkSize)));
}

}  // namespace

bool LocatedElement::isNamed(std::string_view uri, std::string_view local) const {
  return namespaceUri == uri && localName == local;
}

const std::string* LocatedElement::attribute(std::string_view name) const {
  for (const LocatedAttribute& candidate : attributes) {
    if (candidate.qualifiedName == name) return &candidate.value;
  }
  return nullptr;
}

const LocatedElement* LocatedElement::child(std::string_view name) const {
  for (const LocatedElement& candidate : children) {
    if (candidate.qualifiedName == name) return &candidate;
  }
  return nullptr;
}

std::string LocatedElement::type() const {
  for (const LocatedAttribute& candidate : attributes) {
    if (candidate.namespaceUri == XmlSchemaInstanceNamespaceUri && candidate.localName == "type") {
      return candidate.value;
    }
  }
  return "";
}

bool LocatedElement::says(std::string_view name) const {
  const std::string* value = attribute(name);
  return value != nullptr && saysTrue(I18NString(*value));
}

LocatedDocument::LocatedDocument(std::string content) {
  if (!parseAsLibrary(content)) return;
  m_utf16 = utf16NameOf(content);
  m_bytes = m_utf16 != nullptr ? decoded(content, m_utf16) : std::move(content);
  locate();
}

// UTF-16 was taken apart for the sake of byte offsets; any other encoding that the parser reads has
// the ASCII characters of the markup as single bytes, and stays as it is.
std::string LocatedDocument::encoded(const std::string& bytes) const {
  if (m_utf16 == nullptr) return bytes;
  int length = 0;
  const I18NString text = textOf(bytes);
  const char* content = text.c_str(m_utf16, &length);
  const bool little = m_utf16 == std::string_view("UTF-16LE");
  return (little ? utf16LittleEndianMark : utf16BigEndianMark) +
         std::string(content, static_cast<std::size_t>(length));
}

// By the library's own parser, so that both agree on what is a document; the one below only finds
// places.
bool LocatedDocument::parseAsLibrary(const std::string& content) {
  std::istringstream stream(content);
  VRDIDOM_Parser parser(0);
  VRDIDOM_Document document;
  if (parser.parse(stream, document) != 0) return true;
  m_errorText = bytesOf(parser.getErrorText());
  if (m_errorText.empty()) m_errorText = "the document does not parse";
  m_errorLine = parser.getErrorLine();
  m_errorColumn = parser.getErrorColumn();
  return false;
}

/// The library has parsed it, so it is well-formed, has no DOCTYPE and is not nested too deep.
void LocatedDocument::locate() {
  using xercesc::XMLUni;
  const std::unique_ptr<xercesc::SAX2XMLReader> reader(
      xercesc::XMLReaderFactory::createXMLReader());
  reader->setFeature(XMLUni::fgSAX2CoreValidation, false);
  reader->setFeature(XMLUni::fgXercesSchema, false);
  reader->setFeature(XMLUni::fgXercesLoadExternalDTD, false);
  reader->setFeature(XMLUni::fgXercesCalculateSrcOfs, true);
  ElementBuilder builder(*reader, m_bytes);
  reader->setContentHandler(&builder);
  xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(m_bytes.data()),
                                    m_bytes.size(), XMLUni::fgZeroLenString);
  if (m_utf16 != nullptr) source.setEncoding(XMLUni::fgUTF8EncodingString);
  reader->parse(source);
  m_root = builder.takeRoot();
}
