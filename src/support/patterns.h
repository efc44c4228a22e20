// The placeholder patterns. Plain syntax: identifier, "-", row, "-", column (TX-2-3). The
// syntax chosen by "-rx=new" adds an optional font part ("-" and a font name) and always a
// closing "_" (TX-2-3-Helvetica_). With a separator (a tab), the patterns accept one
// separator after every character of a placeholder, where a text run may end inside it.
#pragma once

#include <string>

class AI_REGEX_PATTERN {
 public:
  // The plain pattern for one identifier; sep may be null (no separators).
  const char* create_pattern(const char* id, const char* sep);
  // The plain pattern for any identifier of capital letters.
  const char* create_pattern(const char* sep);

 private:
  std::string pattern;
};

class AI_REGEX_PATTERN2 {
 public:
  const char* create_pattern(const char* id, const char* sep);
  const char* create_pattern(const char* sep);

 private:
  std::string pattern;
};
