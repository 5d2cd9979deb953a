#pragma once

/// Lets allocations fail: those of our own code with `operator new` and `malloc`, of Xerces-C and
/// of ICU. Counts on the thread that armed it only.
class FailingMemory {
 public:
  enum class Which { One, AllFrom };

  /// From here to the end of the block the allocation with the number @p first, counted from 1,
  /// fails; with `AllFrom`, all behind it too.
  FailingMemory(long first, Which which);
  ~FailingMemory();
  FailingMemory(const FailingMemory&) = delete;
  FailingMemory& operator=(const FailingMemory&) = delete;

  /// Whether it came to a failure.
  static bool hasFailed();
};
