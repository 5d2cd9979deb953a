#pragma once

// Letters and digits of US-ASCII. Not `isupper`, `isalnum` and `tolower`: those ask the process
// locale, and in Turkish that makes something else of an "I".

constexpr bool isAsciiUpper(char ch) { return ch >= 'A' && ch <= 'Z'; }
constexpr bool isAsciiLower(char ch) { return ch >= 'a' && ch <= 'z'; }
constexpr bool isAsciiDigit(char ch) { return ch >= '0' && ch <= '9'; }
constexpr bool isAsciiAlphanumeric(char ch) {
  return isAsciiUpper(ch) || isAsciiLower(ch) || isAsciiDigit(ch);
}
constexpr char asciiLower(char ch) {
  return isAsciiUpper(ch) ? static_cast<char>(ch - 'A' + 'a') : ch;
}
