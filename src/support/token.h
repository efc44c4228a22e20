// Splits one line into words at a delimiter, the way PostScript operator lines are read:
// a word that begins with "(" is a string and runs to its closing unescaped ")".
#pragma once

#include <cstddef>
#include <string_view>

class TOKEN {
 public:
  // Starts on a new line; neither text is copied, both must outlive the walk.
  void init(std::string_view line, const char* delim);
  // The next word, as a view into the line; false when the line is used up. The first call
  // after init always gives a word, even for an empty line.
  bool next(std::string_view* word);

 private:
  const char* string_end(const char* open) const;
  bool starts_with_delim(const char* p) const;

  const char* end = nullptr;
  const char* delim = nullptr;
  size_t delim_len = 0;
  const char* cursor = nullptr;
};
