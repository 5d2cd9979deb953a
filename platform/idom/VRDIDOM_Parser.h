#pragma once

#include <istream>

#include "platform/core/I18NString.h"
#include "platform/core/IBJInputStream.h"
#include "platform/core/VRDExport.h"
#include "platform/idom/VRDIDOM_Document.h"

class ByteSource;

/// Parses XML into documents. One thread uses a parser at a time.
///
/// Aware of namespaces, not validating. Nothing outside the given bytes is opened: a DOCTYPE is
/// refused, and with it every entity but the five of XML itself. Nesting beyond
/// `VRDIDOM_Parser::maximumDepth` elements is refused. CDATA sections, comments and processing
/// instructions leave no trace but their character data, so adjacent text is one text node. White
/// space between elements stays. XML 1.0 is read, in UTF-8, in UTF-16 with a byte order mark, and
/// in whatever encoding the XML declaration names and ICU knows; any other version is malformed.
/// Each attribute is compared with the others of its element, so the time grows with the square of
/// their number: some thousand on one element are quick, ten thousand take seconds.
class VRD_EXPORT VRDIDOM_Parser {
 public:
  /// How deep elements may be nested, the root counted as 1.
  static constexpr int maximumDepth = 256;

  /// What `getErrorCode` gives.
  enum ErrorCode : int {
    NoError = 0,
    Malformed = 1,       ///< Not well-formed XML 1.0, or not in the encoding that it tells.
    StreamFailed = 2,    ///< The stream had failed, failed on the way, or threw.
    DoctypeRefused = 3,  ///< There is a DOCTYPE.
    TooDeep = 4,         ///< Elements are nested beyond `maximumDepth`.
  };

  /// What a parser leaves out beside what the class tells.
  enum Flag : int {
    /// White space that stands alone between the children of the root. A document that is read for
    /// those children alone is smaller and quicker without it.
    DropRootWhitespace = 1,
  };

  /// @param flag 0, or a `Flag`
  explicit VRDIDOM_Parser(int flag);
  ~VRDIDOM_Parser();
  VRDIDOM_Parser(const VRDIDOM_Parser&) = delete;
  VRDIDOM_Parser& operator=(const VRDIDOM_Parser&) = delete;

  /// Parses everything up to the end of the stream. On success @p document, which may be null
  /// before, designates the new document; on failure it stands as it was. Malformed input is
  /// reported by the result and never thrown. Exhausted memory throws `std::bad_alloc`; what an
  /// `IBJInputStream` throws comes through.
  /// @return non-zero on success, 0 on failure
  int parse(std::istream& stream, VRDIDOM_Document& document);
  int parse(IBJInputStream& stream, VRDIDOM_Document& document);
  /// @param length of @p bytes, without any terminating NUL; a negative one acts as 0
  int parse(const char* bytes, int length, VRDIDOM_Document& document);

  /// @name What went wrong in the last parse
  /// @{
  int getErrorCode() const { return m_errorCode; }
  /// For a person; empty if nothing went wrong.
  const I18NString& getErrorText() const { return m_errorText; }
  /// Line and column counted from 1; 0 if not known.
  unsigned long getErrorLine() const { return m_errorLine; }
  unsigned long getErrorColumn() const { return m_errorColumn; }
  /// @}

 private:
  int parse(ByteSource& source, VRDIDOM_Document& document);
  void note(ErrorCode code, const I18NString& text, unsigned long line, unsigned long column);

  int m_flag;
  int m_errorCode = NoError;
  I18NString m_errorText;
  unsigned long m_errorLine = 0;
  unsigned long m_errorColumn = 0;
};
