#pragma once

#include <list>
#include <map>
#include <string>

/// What the stand-in provider is told to do, and what it saw. It lives in the provider; the test
/// fetches it with `standIn`.
struct StandIn {
  // The operations that the library uses.
  static constexpr char initialize = 'I', begin = 'B', settings = 'S', details = 'D',
                        unprotect = 'U', release = 'F', close = 'C', terminate = 'T';
  /// What is wrong with an operation; together with "|".
  static constexpr int fails = 1, once = 2, warns = 4, throws = 8, leavesHandle = 16,
                       givesNoBlock = 32;

  std::map<char, int> faults;  // by operation
  std::string clearText;       // what HLD_UnprotectData gives

  std::string calls;                   // the operations in the order of their calls
  std::string documents;               // the control documents
  int badArguments = 0;                // a wrong handle, or something in a reserved place
  std::list<std::string> loans;        // stay with the provider, so that no address comes twice
  std::map<const void*, int> balance;  // given back less given out
};

/// The type of the one name that the stand-in exports beyond those of a provider.
using StandInAccess = StandIn*();
