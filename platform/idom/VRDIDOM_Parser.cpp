#include "platform/idom/VRDIDOM_Parser.h"

#include <string_view>

#include "platform/idom/ByteSource.h"
#include "platform/idom/DomAccess.h"
#include "platform/idom/DomBorder.h"
#include "platform/idom/DomBuilder.h"
#include "platform/idom/XercesRuntime.h"

namespace {

VRDIDOM_Parser::ErrorCode codeOf(DomBuilder::Outcome outcome) {
  switch (outcome) {
    case DomBuilder::Outcome::Success:
      return VRDIDOM_Parser::NoError;
    case DomBuilder::Outcome::Malformed:
      return VRDIDOM_Parser::Malformed;
    case DomBuilder::Outcome::DoctypeRefused:
      return VRDIDOM_Parser::DoctypeRefused;
    case DomBuilder::Outcome::TooDeep:
      return VRDIDOM_Parser::TooDeep;
  }
  return VRDIDOM_Parser::Malformed;
}

}  // namespace

VRDIDOM_Parser::VRDIDOM_Parser(int flag) : m_flag(flag) {}
VRDIDOM_Parser::~VRDIDOM_Parser() = default;

int VRDIDOM_Parser::parse(std::istream& stream, VRDIDOM_Document& document) {
  IBJBufferedInputStream bytes(stream);
  return parse(bytes, document);
}

int VRDIDOM_Parser::parse(IBJInputStream& stream, VRDIDOM_Document& document) {
  StreamSource source(stream);
  return parse(source, document);
}

int VRDIDOM_Parser::parse(const char* bytes, int length, VRDIDOM_Document& document) {
  const bool isEmpty = bytes == nullptr || length < 0;
  MemorySource source(isEmpty ? std::string_view()
                              : std::string_view(bytes, static_cast<std::size_t>(length)));
  return parse(source, document);
}

int VRDIDOM_Parser::parse(ByteSource& source, VRDIDOM_Document& document) {
  ParseMemory memory;
  return atBorder([&] {
    // Holds unless a verdict takes its place: the source may throw.
    note(StreamFailed, I18NString("the stream failed"), 0, 0);
    XercesRuntime::instance();
    DomBuilder builder(memory, maximumDepth, (m_flag & DropRootWhitespace) != 0);
    const DomBuilder::Result& result = builder.build(source);
    if (!source.hasFailed()) {
      note(codeOf(result.outcome), I18NString::fromUtf16(result.errorText), result.line,
           result.column);
    }
    if (m_errorCode == NoError) document = DomAccess::adopt(builder.takeDocument());
    return m_errorCode == NoError ? 1 : 0;
  });
}

void VRDIDOM_Parser::note(ErrorCode code, const I18NString& text, unsigned long line,
                          unsigned long column) {
  m_errorCode = code;
  m_errorText = text;
  m_errorLine = line;
  m_errorColumn = column;
}
