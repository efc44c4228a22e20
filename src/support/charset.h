// Unicode text converted into the encoding of a document's strings, through the C library's
// iconv: no tables of our own, and no transliteration, so a character the encoding cannot
// hold is reported rather than replaced.
#pragma once

#include <iconv.h>
#include <string>
#include <string_view>

class CHARSET {
 public:
  // Opens the conversion from UTF-8 into the encoding iconv knows as name ("MACINTOSH",
  // "WINDOWS-1252", "SHIFT_JIS"; a trailing "//", as "iconv --list" prints names, is
  // allowed). Fails the run when iconv knows no such name, or the name asks for a suffix
  // such as "//TRANSLIT" that would replace characters without a word.
  explicit CHARSET(std::string name);
  ~CHARSET();
  CHARSET(const CHARSET&) = delete;
  CHARSET& operator=(const CHARSET&) = delete;

  const std::string& name() const { return encoding; }
  // Appends the valid UTF-8 text utf8, converted, to out. Returns the offset in utf8 of the
  // first character the encoding has no code for (out then holds the part before it), or
  // std::string_view::npos when every character was converted.
  size_t convert(std::string_view utf8, std::string& out);

 private:
  bool convert_all(const char* in, size_t in_size, size_t* converted, std::string& out);

  std::string encoding;
  iconv_t cd;
  // Set when every ASCII character converts to itself: ASCII text then needs no call.
  bool ascii_as_is = false;
};

// The other way, from the encoding back into UTF-8: a file name made from a converted cell
// is written as the cell was in the spreadsheet. A byte that spells no character becomes
// "_".
class UTF8_FROM {
 public:
  // name as CHARSET takes it; its failures too.
  explicit UTF8_FROM(const std::string& name);
  ~UTF8_FROM();
  UTF8_FROM(const UTF8_FROM&) = delete;
  UTF8_FROM& operator=(const UTF8_FROM&) = delete;

  std::string convert(std::string_view text);

 private:
  iconv_t cd;
};
