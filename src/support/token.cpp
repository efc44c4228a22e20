#include "support/token.h"

#include <cstring>

// The ")" that closes the string opened at `open`, or nullptr when the line ends first.
// A backslash makes the next character ordinary; before digits it passes the whole run.
const char* TOKEN::string_end(const char* open) const {
  auto digit = [this](const char* p) { return p < end && *p >= '0' && *p <= '9'; };
  const char* p = open + 1;
  while (p < end) {
    if (*p == ')') return p;
    if (*p == '\\') {
      ++p;
      if (digit(p)) {
        while (digit(p)) ++p;
      } else if (p < end) {
        ++p;
      }
      continue;
    }
    ++p;
  }
  return nullptr;
}

// A word that begins with "(" runs to the ")" that closes it, or to the end of the line.
bool TOKEN::next_string(std::string_view* word) {
  const std::string_view rest(cursor, static_cast<size_t>(end - cursor));
  const char* close = string_end(cursor);
  if (!close) {
    *word = rest;
    cursor = nullptr;
  } else {
    *word = rest.substr(0, static_cast<size_t>(close - cursor) + 1);
    cursor = close + 1;
    if (delim_len > 0 && starts_with_delim(cursor)) cursor += delim_len;
  }
  return true;
}

const char* TOKEN::find_long_delim(const char* from) const {
  const std::string_view rest(from, static_cast<size_t>(end - from));
  const size_t found =
      delim_len > 0 ? rest.find(std::string_view(delim, delim_len)) : std::string_view::npos;
  return found == std::string_view::npos ? end : from + found;
}

bool TOKEN::starts_with_delim(const char* p) const {
  return static_cast<size_t>(end - p) >= delim_len && std::memcmp(p, delim, delim_len) == 0;
}

bool holds_word(std::string_view line, std::string_view word) {
  // Most lines cannot hold the word at all; only those that do are split into words.
  if (line.find(word) == std::string_view::npos) return false;
  TOKEN token;
  token.init(line, " ");
  std::string_view w;
  while (token.next(&w)) {
    if (w == word) return true;
  }
  return false;
}
