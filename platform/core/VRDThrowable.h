#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "platform/core/I18NString.h"
#include "platform/core/VRDExport.h"
#include "platform/core/VRDFileLocation.h"

/// One record of a back trace. The texts are in static storage.
struct VRDBackTraceRecord {
  const char* file;  ///< The source unit.
  long line;         ///< The line in it.
  /// "VRD_THROW" where the error was raised, "VRD_RETHROW" where it passed.
  const char* macroWord;
};

/// Root of the exception family: whoever passes an error on catches `VRDThrowable&`.
/// Carries the back trace. A value: thrown by value, copied by every throw.
/// An object belongs to one thread at a time.
class VRD_EXPORT VRDThrowable {
 public:
  VRDThrowable();
  VRDThrowable(const VRDThrowable&);
  VRDThrowable& operator=(const VRDThrowable&);
  virtual ~VRDThrowable();

  /// A copy under its own type, on the heap; the caller owns it.
  virtual VRDThrowable* clone() const = 0;

  /// Adds one back-trace record made of the arguments, then throws a copy of the object under its
  /// own type. Never returns.
  [[noreturn]] virtual void hurl(const VRDFileLocation& where, const char* text,
                                 const char* macroWord) = 0;

  /// What went wrong, for a person: one line a message, without state and back trace. Never empty.
  virtual I18NString getMessage();
  /// The name of the object's class, in static storage.
  virtual const char* getThrowableName() const = 0;
  /// Everything that the object knows, the back trace included, one fact a line.
  virtual I18NString toString();
  virtual I18NString getMessage() const = 0;

  /// Appends the same as `toString()` to @p out.
  /// @param linePrefix what each line begins with; null for nothing
  /// @param lineEnd    what stands between lines, and behind none; null for a newline
  /// @param withBackTrace 0 leaves the back trace out
  virtual void toString(const char* linePrefix, const char* lineEnd, I18NString& out,
                        int withBackTrace);

  /// Adds a record to the back trace. Never fails: a record that finds no memory is left out, since
  /// the error itself is worth more.
  /// @param text      a remark on the site, or null; kept in no record
  /// @param macroWord "VRD_THROW" or "VRD_RETHROW"; static storage
  void addBackTrace(const VRDFileLocation& where, const char* text, const char* macroWord) noexcept;

  std::size_t getBackTraceCount() const { return m_firstCount + m_more.size(); }
  /// Record @p index, oldest first. @p index must be below the count.
  const VRDBackTraceRecord& getBackTraceAt(std::size_t index) const {
    return index < m_firstCount ? m_first[index] : m_more[index - m_firstCount];
  }

 protected:
  /// Does the work of `toString` for a class that has more to tell than its message.
  /// @param state one line, told between class name and message unless it is the message
  void appendLines(const I18NString& state, const char* linePrefix, const char* lineEnd,
                   I18NString& out, int withBackTrace) const;

 private:
  // The first records live in the object: an error may be telling of the end of memory.
  std::array<VRDBackTraceRecord, 4> m_first{};
  std::size_t m_firstCount = 0;
  std::vector<VRDBackTraceRecord> m_more;
};
