#pragma once

// The case of the 26 letters. Not `isupper` and `tolower`: those ask the process locale, and in
// Turkish that makes something else of an "I".

constexpr bool isAsciiUpper(char ch) { return ch >= 'A' && ch <= 'Z'; }
constexpr char asciiLower(char ch) {
  return isAsciiUpper(ch) ? static_cast<char>(ch - 'A' + 'a') : ch;
}
