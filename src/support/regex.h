// One compiled POSIX extended regular expression and the text it walks. Compiled
// expressions are kept for the life of the process, so each distinct pattern is compiled
// once however many objects use it.
#pragma once

#include <regex.h>
#include <string>
#include <string_view>

class MY_REGEX {
 public:
  // Compiles pattern (REG_EXTENDED only). Returns 1, or 0 when it does not compile; then
  // error_text() is "regcomp() error:" with the library's text and a line feed.
  int compile(const char* pattern);
  // Makes text (up to its NUL) the subject and restarts the walk at its beginning. The text
  // is not copied: it must stay as it is while the walk goes on.
  const char* init_offset(const char* text);
  // Where the walk stands: after the last match. skip_to moves it.
  size_t position() const { return offset; }
  void skip_to(size_t at) { offset = at; }
  // Non-overlapping matches in the whole subject; does not move the walk.
  int match_count() const;
  // The next match from where the walk stands: copies it into out and moves past it.
  // Returns 0, leaving out and the walk alone, when there is none.
  int match_next(std::string& out);
  // 1 when the expression matches anywhere in the subject.
  int match_yes() const;

  const std::string& error_text() const { return errbuf; }

 private:
  // Searches subject from position from; on a match sets start and end (absolute).
  bool search(size_t from, size_t* start, size_t* end) const;

  const regex_t* regex = nullptr;
  std::string_view subject;
  size_t offset = 0;
  std::string errbuf;
};
