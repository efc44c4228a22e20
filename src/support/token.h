// Splits one line into words at a delimiter, the way PostScript operator lines are read:
// a word that begins with "(" is a string and runs to its closing unescaped ")".
#pragma once

#include <cstddef>
#include <string_view>

class TOKEN {
 public:
  // Starts on a new line; neither text is copied, both must outlive the walk.
  void init(std::string_view line, const char* delimiter) {
    end = line.data() + line.size();
    delim = delimiter;
    delim_len = std::char_traits<char>::length(delimiter);
    cursor = line.data();
  }
  // The next word, as a view into the line; false when the line is used up. The first call
  // after init always gives a word, even for an empty line.
  bool next(std::string_view* word) {
    if (!cursor) return false;
    if (cursor < end && *cursor == '(') return next_string(word);
    const char* stop = find_delim(cursor);
    *word = std::string_view(cursor, static_cast<size_t>(stop - cursor));
    cursor = stop == end ? nullptr : stop + delim_len;
    return true;
  }

 private:
  const char* string_end(const char* open) const;
  bool starts_with_delim(const char* p) const;
  bool next_string(std::string_view* word);
  // The first delimiter at or after from, or the end of the line. Words are short, so the
  // one-character delimiter that the tool's readers use is found by a plain loop rather
  // than a library search.
  const char* find_delim(const char* from) const {
    if (delim_len != 1) return find_long_delim(from);
    const char c = *delim;
    const char* p = from;
    while (p < end && *p != c) ++p;
    return p;
  }
  const char* find_long_delim(const char* from) const;

  const char* end = nullptr;
  const char* delim = nullptr;
  size_t delim_len = 0;
  const char* cursor = nullptr;
};

// Whether word is one of the line's words (as TOKEN splits them at " ").
bool holds_word(std::string_view line, std::string_view word);
