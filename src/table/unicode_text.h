// The characters of a table saved as Unicode text: UTF-8 with or without a byte-order mark,
// or UTF-16 in either byte order after its byte-order mark. Bytes that spell no character
// are handed on as such, so that the reader can name the cell they stand in.
#pragma once

#include <string>
#include <string_view>

class UNICODE_TEXT {
 public:
  static constexpr char32_t kEnd = 0xFFFFFFFF;        // after the last character
  static constexpr char32_t kMalformed = 0xFFFFFFFE;  // bytes that spell no character

  explicit UNICODE_TEXT(std::string_view bytes);

  // The next character, or kEnd or kMalformed; get moves past it, peek does not.
  char32_t get();
  char32_t peek() const;
  // What was wrong with the bytes of the last kMalformed, such as "malformed UTF-8 (byte
  // 0xE9)".
  std::string problem() const;
  // Whether the text is read as UTF-8 (it has no UTF-16 byte-order mark).
  bool reads_utf8() const { return form == FORM::utf8; }

 private:
  enum class FORM { utf8, utf16le, utf16be };
  char32_t decode(size_t at, size_t* length) const;
  char32_t decode_utf16(size_t at, size_t* length) const;
  unsigned unit_at(size_t at) const;

  std::string_view bytes;
  FORM form = FORM::utf8;
  size_t next = 0;
  size_t malformed_at = 0;
};

// The character whose UTF-8 bytes begin at text[at], with *length set to their number (1
// for kMalformed, 0 for kEnd). Strict: no overlong forms, no surrogates, nothing above
// U+10FFFF.
char32_t decode_utf8(std::string_view text, size_t at, size_t* length);

// Appends the UTF-8 bytes of the character c to out.
void append_utf8(char32_t c, std::string& out);
