#pragma once

#include <xercesc/parsers/XercesDOMParser.hpp>

#include <string>

#include "platform/idom/ByteSource.h"
#include "platform/idom/ParseMemory.h"

/// One parse with Xerces-C, hardened: see `VRDIDOM_Parser` for what it refuses and leaves out.
class DomBuilder final : private xercesc::XercesDOMParser {
 public:
  enum class Outcome { Success, Malformed, DoctypeRefused, TooDeep };

  struct Result {
    Outcome outcome = Outcome::Success;
    std::u16string errorText;
    XMLFileLoc line = 0;
    XMLFileLoc column = 0;
  };

  DomBuilder(ParseMemory& memory, int maximumDepth, bool dropRootWhitespace);
  ~DomBuilder() override;

  /// To be called once. Throws what Xerces-C throws when memory is exhausted, and what the source
  /// throws.
  const Result& build(ByteSource& source);
  /// After a success: the document, which the caller releases.
  xercesc::DOMDocument* takeDocument() { return adoptDocument(); }

 private:
  void XMLDecl(const XMLCh* version, const XMLCh* encoding, const XMLCh* standalone,
               const XMLCh* actualEncoding) override;
  void startDocument() override;
  void endDocument() override;
  void startElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId,
                    const XMLCh* prefix, const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                    XMLSize_t attributeCount, bool isEmpty, bool isRoot) override;
  void endElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId, bool isRoot,
                  const XMLCh* prefix) override;
  void docCharacters(const XMLCh* text, XMLSize_t length, bool isCData) override;
  void docComment(const XMLCh* text) override;
  void docPI(const XMLCh* target, const XMLCh* data) override;
  void error(unsigned int code, const XMLCh* domain, ErrTypes type, const XMLCh* text,
             const XMLCh* systemId, const XMLCh* publicId, XMLFileLoc line,
             XMLFileLoc column) override;
  void resetErrors() override {}

  bool peek(XMLCh& next) const;
  bool standsBehindDoctype() const;
  void flushText();
  void wipeText();
  [[noreturn]] void stop(Outcome outcome, std::u16string text);

  ParseMemory& m_memory;
  const int m_maximumDepth;
  const bool m_dropRootWhitespace;
  int m_depth = 0;
  XMLSize_t m_undecodedBytes = 0;  // when the source was last asked for more
  std::u16string m_text;           // since the last tag
  Result m_result;
};
