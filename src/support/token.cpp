#include "support/token.h"

#include <cstring>

void TOKEN::init(const char* line, const char* delimiter) {
  str = line;
  delim = delimiter;
  delim_len = std::strlen(delimiter);
  cursor = line;
}

// The ")" that closes the string opened at `open`, or nullptr when the line ends first.
// A backslash makes the next character ordinary; before digits it passes the whole run.
const char* TOKEN::string_end(const char* open) const {
  const char* p = open + 1;
  for (;;) {
    if (*p == '\0') return nullptr;
    if (*p == ')') return p;
    if (*p == '\\') {
      ++p;
      if (*p >= '0' && *p <= '9') {
        while (*p >= '0' && *p <= '9') ++p;
      } else if (*p != '\0') {
        ++p;
      }
      continue;
    }
    ++p;
  }
}

bool TOKEN::next(std::string_view* word) {
  if (!cursor) return false;
  if (*cursor == '(') {
    const char* close = string_end(cursor);
    if (!close) {
      *word = cursor;
      cursor = nullptr;
    } else {
      *word = std::string_view(cursor, static_cast<size_t>(close - cursor) + 1);
      cursor = close + 1;
      if (delim_len > 0 && std::strncmp(cursor, delim, delim_len) == 0) cursor += delim_len;
    }
    return true;
  }
  const char* found = delim_len == 1  ? std::strchr(cursor, delim[0])
                      : delim_len > 1 ? std::strstr(cursor, delim)
                                      : nullptr;
  if (found) {
    *word = std::string_view(cursor, static_cast<size_t>(found - cursor));
    cursor = found + delim_len;
  } else {
    *word = cursor;
    cursor = nullptr;
  }
  return true;
}

const char* TOKEN::get() {
  std::string_view word;
  if (!next(&word)) return nullptr;
  token.assign(word);
  return token.c_str();
}
