#include "platform/idom/DomBuilder.h"

#include <cstring>
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/framework/XMLErrorCodes.hpp>
#include <xercesc/internal/XMLReader.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/sax/InputSource.hpp>
#include <xercesc/sax/Locator.hpp>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/XMLChar.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <algorithm>
#include <utility>

#include "platform/idom/DomText.h"
#include "platform/idom/XercesRuntime.h"

namespace {

/// Thrown through Xerces-C to leave a parse; the reason lies in the result by then.
struct Stopped {};

class SourceStream final : public xercesc::BinInputStream {
 public:
  SourceStream(ByteSource& source, XMLSize_t& undecodedBytes)
      : m_source(source), m_undecodedBytes(undecodedBytes) {}

  XMLFilePos curPos() const override { return m_position; }
  XMLSize_t readBytes(XMLByte* to, XMLSize_t count) override {
    const std::size_t got = m_source.read(reinterpret_cast<char*>(to), count);
    m_position += got;
    // The reader asks for as much as its buffer takes beside what it could not decode yet.
    m_wholeBuffer = std::max(m_wholeBuffer, count);
    m_undecodedBytes = m_wholeBuffer - count;
    return got;
  }
  const XMLCh* getContentType() const override { return nullptr; }

 private:
  ByteSource& m_source;
  XMLSize_t& m_undecodedBytes;
  XMLSize_t m_wholeBuffer = 0;
  XMLFilePos m_position = 0;
};

class SourceInput final : public xercesc::InputSource {
 public:
  SourceInput(ParseMemory& memory, ByteSource& source, XMLSize_t& undecodedBytes)
      : xercesc::InputSource(&memory), m_source(source), m_undecodedBytes(undecodedBytes) {}

  // In the parser's memory, which it gives the stream back to.
  xercesc::BinInputStream* makeStream() const override {
    return new (getMemoryManager()) SourceStream(m_source, m_undecodedBytes);
  }

 private:
  ByteSource& m_source;
  XMLSize_t& m_undecodedBytes;
};

bool isBlank(const std::u16string& text) {
  return text.find_first_not_of(u" \t\r\n") == std::u16string::npos;
}

}  // namespace

DomBuilder::DomBuilder(ParseMemory& memory, int maximumDepth, bool dropRootWhitespace)
    : xercesc::XercesDOMParser(nullptr, &memory),
      m_memory(memory),
      m_maximumDepth(maximumDepth),
      m_dropRootWhitespace(dropRootWhitespace) {
  // Made for parsing without a grammar: the same verdicts, and quicker to start.
  useScanner(xercesc::XMLUni::fgWFXMLScanner);
  setDoNamespaces(true);
  setValidationScheme(Val_Never);
  setDoSchema(false);
  setLoadSchema(false);
  // None of these is reached, as a DOCTYPE ends the parse; two locks are better than one.
  setLoadExternalDTD(false);
  setDisableDefaultEntityResolution(true);
  setCreateEntityReferenceNodes(false);
  getScanner()->setDisallowDTD(true);
  getScanner()->setErrorReporter(this);
}

DomBuilder::~DomBuilder() { wipeText(); }

const DomBuilder::Result& DomBuilder::build(ByteSource& source) {
  try {
    parse(SourceInput(m_memory, source, m_undecodedBytes));
  } catch (const Stopped&) {
    // The result tells why.
  } catch (const xercesc::DOMException& error) {
    m_result = {Outcome::Malformed, std::u16string(viewOf(error.getMessage())), 0, 0};
  } catch (const xercesc::XMLException& error) {
    m_result = {Outcome::Malformed, std::u16string(viewOf(error.getMessage())), 0, 0};
  }
  return m_result;
}

// The scanner takes any version that begins like 1.0 or 1.1.
void DomBuilder::XMLDecl(const XMLCh* version, const XMLCh* /*encoding*/,
                         const XMLCh* /*standalone*/, const XMLCh* /*actualEncoding*/) {
  if (viewOf(version) != u"1.0") stop(Outcome::Malformed, u"the version of XML is not 1.0");
}

// As the base does it, but the base would make the document in the memory of the parser.
void DomBuilder::startDocument() {
  setDocument(XercesRuntime::instance().createDocument());
  fCurrentParent = getDocument();
  fCurrentNode = getDocument();
  getDocument()->setStrictErrorChecking(false);
}

void DomBuilder::startElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId,
                              const XMLCh* prefix,
                              const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                              XMLSize_t attributeCount, bool isEmpty, bool isRoot) {
  if (m_depth == m_maximumDepth) {
    stop(Outcome::TooDeep, u"elements are nested too deeply");
  }
  flushText();
  ++m_depth;
  // Tells the end of an empty element by itself.
  XercesDOMParser::startElement(declaration, uriId, prefix, attributes, attributeCount, isEmpty,
                                isRoot);
}

void DomBuilder::endElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId,
                            bool isRoot, const XMLCh* prefix) {
  flushText();
  --m_depth;
  XercesDOMParser::endElement(declaration, uriId, isRoot, prefix);
}

// Text comes in pieces, parted by CDATA sections, comments, instructions and full buffers. It is
// collected up to the next tag, so that one node of the right size is made of it.
void DomBuilder::docCharacters(const XMLCh* text, XMLSize_t length, bool /*isCData*/) {
  if (m_depth > 0) m_text.append(text, length);
}

void DomBuilder::flushText() {
  if (m_text.empty()) return;
  if (!(m_dropRootWhitespace && m_depth == 1 && isBlank(m_text))) {
    XercesDOMParser::docCharacters(m_text.data(), m_text.size(), false);
  }
  wipeText();
}

// A text may be a secret, so what is ours is wiped. Not so the memory of Xerces-C: its reader alone
// holds 200 KiB, and to wipe them makes the parse of a small document half as long again.
void DomBuilder::wipeText() {
  ::explicit_bzero(m_text.data(), m_text.size() * sizeof m_text[0]);
  m_text.clear();
}

// The scanner takes a NUL, and bytes that make no character, for the end of its input.
void DomBuilder::endDocument() {
  XMLCh next = 0;
  if (peek(next) || m_undecodedBytes > 0) {
    stop(Outcome::Malformed, u"behind the root stands what cannot be read");
  }
  XercesDOMParser::endDocument();
}

void DomBuilder::docComment(const XMLCh* /*text*/) {}

void DomBuilder::docPI(const XMLCh* /*target*/, const XMLCh* /*data*/) {}

bool DomBuilder::peek(XMLCh& next) const {
  const xercesc::XMLReader* current = getScanner()->getReaderMgr()->getCurrentReader();
  // Looking ahead may refill the reader and changes nothing else.
  auto* reader = const_cast<xercesc::XMLReader*>(current);  // NOLINT(*-const-cast)
  return reader != nullptr && reader->peekNextChar(next);
}

// Before the root the scanner takes away white space and refuses what follows it, so if there is
// white space when it refuses, then it has taken the beginning of a DOCTYPE away too.
bool DomBuilder::standsBehindDoctype() const {
  XMLCh next = 0;
  return peek(next) && xercesc::XMLChar1_0::isWhitespace(next);
}

void DomBuilder::error(unsigned int code, const XMLCh* /*domain*/, ErrTypes type, const XMLCh* text,
                       const XMLCh* /*systemId*/, const XMLCh* /*publicId*/, XMLFileLoc line,
                       XMLFileLoc column) {
  if (type == ErrType_Warning || m_result.outcome != Outcome::Success) return;
  const bool isDoctype =
      code == xercesc::XMLErrs::InvalidDocumentStructure && standsBehindDoctype();
  m_result = {isDoctype ? Outcome::DoctypeRefused : Outcome::Malformed,
              isDoctype ? u"a DOCTYPE is not taken" : std::u16string(viewOf(text)), line, column};
}

void DomBuilder::stop(Outcome outcome, std::u16string text) {
  const xercesc::Locator& locator = *getScanner()->getLocator();
  m_result = {outcome, std::move(text), locator.getLineNumber(), locator.getColumnNumber()};
  throw Stopped();
}
