// The placeholder patterns. Plain syntax: identifier, "-", row, "-", column (TX-2-3). The
// syntax chosen by "-rx=new" adds an optional font part ("-" and a font name) and always a
// closing "_" (TX-2-3-Helvetica_). With a separator (a tab), the patterns accept one
// separator after every character of a placeholder, where a text run may end inside it.
// Also here: the quick checks that spare most texts the regular expressions, and reading
// the row, column and font that a matched placeholder names.
#pragma once

#include <optional>
#include <string>
#include <string_view>

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

// The pattern for one identifier (any identifier when id is null) with tabs between runs,
// of the syntax with a font when with_font is set. Every object of every layer asks for it,
// so each is built once.
const char* placeholder_pattern(const char* id, bool with_font);

// Whether text holds a placeholder "LETTERS-DIGITS-DIGITS" of any identifier: a match of
// "[A-Z]+-[0-9]+-[0-9]+", found without a regular expression since every text object asks.
bool holds_plain_placeholder(std::string_view text);

// The walk over the placeholders of the plain syntax with tab separators that MY_REGEX
// makes with placeholder_pattern(id, false), without a regular expression: the same matches,
// each the leftmost and then the longest, for any identifier (id null) or a plain one. It
// looks at each byte a bounded number of times, as the expression's matcher does.
class PLAIN_PLACEHOLDERS {
 public:
  explicit PLAIN_PLACEHOLDERS(const char* identifier) : id(identifier) {}
  // Makes text (up to its NUL) the subject and restarts the walk; the text is not copied.
  void init_offset(const char* text);
  // As MY_REGEX::match_next, position and skip_to.
  int match_next(std::string& out);
  size_t position() const { return offset; }
  void skip_to(size_t at) { offset = at; }

 private:
  // The end of the placeholder that starts at start, or npos.
  size_t match_at(size_t start, size_t* resume) const;
  size_t identifier_end(size_t at, size_t* resume) const;
  // The end of a run of digits that may hold single tabs, each after a digit; npos when no
  // digit stands at at.
  size_t digits_end(size_t at) const;

  const char* id;
  std::string_view subject;
  size_t offset = 0;
};

// Whether id is made of letters and digits only. Its pattern then matches it as written;
// other characters may be read by the expression as operators of their own.
bool plain_identifier(const char* id);
// Whether text holds two dashes, as every match of the pattern for any identifier or for a
// plain one does: most texts, once their placeholders are replaced, have none, and need no
// further search.
bool holds_two_dashes(std::string_view text);

// Whether the template's bytes of some lines may hold the second '-' of a placeholder
// "LETTERS-DIGITS-DIGITS" as part of a run's string: in the string a digit follows it, or
// the string ends right after it, one character (a ")" or the word's last) before a space or
// the line's end (a CR, or a NUL, where a line's text ends). For strings that are read
// decoded ("-keep"), where a LF ends lines too and an escape or a hex string may spell any
// byte, decoded is set: then a text that holds a backslash or a '<' may hold one too.
bool may_end_placeholder(std::string_view bytes, bool decoded = false);

// A match without its run separators: the placeholder as the user wrote it.
std::string without_tabs(const std::string& match);

// Row and column of a plain placeholder: the first two runs of digits, tabs ignored.
void rowcol(const std::string& match, long long* row, long long* col);
// Row, column and font name of a placeholder of the syntax with a closing "_".
void rowcol_font(const std::string& match, long long* row, long long* col, std::string* font);
// The row and column that a placeholder of the given syntax names.
void placeholder_cell(const std::string& match, bool with_font, long long* row, long long* col);

// The first plain placeholder of the identifier (of any identifier when id is null) in a
// placed file's name; no separators.
std::optional<std::string> find_name_placeholder(const char* id, const std::string& name);
// The first two runs of digits in a placed file's name; the column repeats the row when
// there is only one.
void name_rowcol(const char* name, int* row, int* col);
