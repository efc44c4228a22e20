// The string toolkit of the text substitution: appending, cutting at a separator, and
// replacing every occurrence of one text by another.
#pragma once

#include <optional>
#include <string>
#include <string_view>

class MY_STRING {
 public:
  // Appends tail to head; a null tail leaves head as it is, an absent head becomes tail.
  static void cat(std::optional<std::string>& head, const char* tail);
  // text with every occurrence of from (left to right, not overlapping) replaced by to.
  // An empty from fails the run.
  static std::string replace(std::string_view text, std::string_view from, std::string_view to);
  // The same in place, written through room (which receives text's old bytes): a caller
  // that keeps room for many texts allocates only while they grow. from and to must not
  // view text.
  static void replace_in(std::string& text, std::string_view from, std::string_view to,
                         std::string& room);
  // The first run of decimal digits at or after *from, moving *from past it; the empty text
  // (and *from at the end) when there is none.
  static std::string_view next_digits(std::string_view text, size_t* from);

  // Prepares to cut text at delim; text must stay unchanged while pieces are taken.
  void split(std::string_view delim, std::string_view text);
  // The next piece, a view into the text; *more tells whether a separator followed it.
  // After the last piece, every call returns that piece again with *more = 0.
  std::string_view split(int* more);

 private:
  std::string_view delim;
  std::string_view rest;
};

// Whether text begins with prefix (options are matched by prefix).
inline bool starts_with(std::string_view text, std::string_view prefix) {
  return text.substr(0, prefix.size()) == prefix;
}
