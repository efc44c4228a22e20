#include "table/delimited_text.h"

#include <cstdio>

#include "support/charset.h"
#include "support/error.h"
#include "support/escapes.h"
#include "table/tab_text.h"

namespace {

constexpr char32_t kQuote = '"';
// Every line end, LF, CR LF or CR, is read as this one character.
constexpr char32_t kLineEnd = '\n';

}  // namespace

DELIMITED_TEXT::DELIMITED_TEXT(std::string_view bytes, char32_t separator_char, CHARSET& to,
                               const std::string& name)
    : text(bytes), separator(separator_char), charset(to), file_name(name) {}

// A line end followed by nothing more starts no row.
void DELIMITED_TEXT::read(TAB_TEXT& table) {
  while (text.peek() != UNICODE_TEXT::kEnd) {
    ++row;
    read_row();
  }
  table.init_from_cells(std::move(cells), row_sizes);
}

void DELIMITED_TEXT::read_row() {
  row_sizes.push_back(0);
  for (col = 1;; ++col) {
    const char32_t end = read_cell();
    finish_cell();
    ++row_sizes.back();
    if (end != separator) return;
  }
}

// Returns what ended the cell: the separator, kLineEnd or UNICODE_TEXT::kEnd.
char32_t DELIMITED_TEXT::read_cell() {
  cell.clear();
  if (text.peek() == kQuote) {
    text.get();
    return read_quoted_cell();
  }
  for (;;) {
    const char32_t c = end_of_line(text.get());
    if (c == separator || c == kLineEnd || c == UNICODE_TEXT::kEnd) return c;
    add(c);
  }
}

// Inside quotes a doubled quote is a quote, and a line end is a line break of the cell's
// text; the closing quote must end the cell.
char32_t DELIMITED_TEXT::read_quoted_cell() {
  for (;;) {
    char32_t c = end_of_line(text.get());
    if (c == UNICODE_TEXT::kEnd) fail_here("quoted cell without its closing quote");
    if (c == kQuote && text.peek() == kQuote) {
      text.get();
    } else if (c == kQuote) {
      c = end_of_line(text.get());
      if (c == separator || c == kLineEnd || c == UNICODE_TEXT::kEnd) return c;
      if (c == UNICODE_TEXT::kMalformed) add(c);
      fail_here("text after the closing quote");
    } else if (c == kLineEnd) {
      c = '\r';  // the line break of a point text
    }
    add(c);
  }
}

// A CR, and a CR LF pair, read as one kLineEnd.
char32_t DELIMITED_TEXT::end_of_line(char32_t c) {
  if (c != '\r') return c;
  if (text.peek() == '\n') text.get();
  return kLineEnd;
}

void DELIMITED_TEXT::add(char32_t c) {
  if (c == UNICODE_TEXT::kMalformed) fail_here(text.problem());
  if (c == 0) fail_here("NUL character (U+0000)");
  append_utf8(c, cell);
}

void DELIMITED_TEXT::finish_cell() {
  converted.clear();
  const size_t bad = charset.convert(cell, converted);
  if (bad != std::string_view::npos) {
    size_t length = 0;
    const char32_t c = decode_utf8(cell, bad, &length);
    char code[16];
    std::snprintf(code, sizeof code, "U+%04X", static_cast<unsigned>(c));
    std::string character;
    append_utf8(c, character);
    fail_here("\"" + character + "\" (" + code + ") has no code in " + charset.name());
  }
  cells += ps_string_escape(converted, false, true);
  cells += '\0';
}

void DELIMITED_TEXT::fail_here(const std::string& what) const {
  fail("%s: row %lld, column %lld: %s\n", file_name.c_str(), row, col, what.c_str());
}
