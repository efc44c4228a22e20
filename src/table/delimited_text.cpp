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
constexpr size_t kProblemsListed = 20;

}  // namespace

DELIMITED_TEXT::DELIMITED_TEXT(std::string_view bytes, char32_t separator_char, CHARSET& to,
                               const std::string& name)
    : text(bytes), separator(separator_char), charset(to), file_name(name) {
  if (separator == kCommaOrSemicolon) separator = first_row_separator();
}

// Spreadsheets where the comma is the decimal mark save CSV with semicolons.
char32_t DELIMITED_TEXT::first_row_separator() const {
  UNICODE_TEXT first_row = text;
  size_t commas = 0;
  size_t semicolons = 0;
  bool quoted = false;
  for (char32_t c = first_row.get(); c != UNICODE_TEXT::kEnd; c = first_row.get()) {
    if (c == kQuote) quoted = !quoted;
    if (quoted) continue;
    if (c == '\r' || c == '\n') break;
    commas += c == ',';
    semicolons += c == ';';
  }
  return semicolons > commas ? ';' : ',';
}

// A line end followed by nothing more starts no row.
void DELIMITED_TEXT::read(TAB_TEXT& table) {
  while (text.peek() != UNICODE_TEXT::kEnd) {
    ++row;
    read_row();
  }
  if (problem_count > 0) {
    std::string message;
    for (const std::string& line : problems) message += line;
    if (problem_count > problems.size()) {
      message += "and " + std::to_string(problem_count - problems.size()) + " more\n";
    }
    if (malformed_seen) {
      message += file_name +
                 ": if it was saved in another encoding, name it with -table-encoding= (such as "
                 "WINDOWS-1252 or MACINTOSH)\n";
    }
    throw Error(message);
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
    if (c == UNICODE_TEXT::kEnd) {
      problem_here("quoted cell without its closing quote");
      return c;
    }
    if (c == kQuote && text.peek() == kQuote) {
      text.get();
    } else if (c == kQuote) {
      c = end_of_line(text.get());
      if (c == separator || c == kLineEnd || c == UNICODE_TEXT::kEnd) return c;
      if (c == UNICODE_TEXT::kMalformed) {
        add(c);
      } else {
        problem_here("text after the closing quote");
      }
      return skip_to_cell_end();
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

// What follows a quoted cell's closing quote up to the cell's end is passed over.
char32_t DELIMITED_TEXT::skip_to_cell_end() {
  for (;;) {
    const char32_t c = end_of_line(text.get());
    if (c == separator || c == kLineEnd || c == UNICODE_TEXT::kEnd) return c;
  }
}

void DELIMITED_TEXT::add(char32_t c) {
  if (c == UNICODE_TEXT::kMalformed) {
    // Bytes that are not UTF-8, in a file without a byte-order mark, suggest another encoding.
    malformed_seen = malformed_seen || text.reads_utf8();
    problem_here(text.problem());
  } else if (c == 0) {
    problem_here("NUL character (U+0000)");
  } else {
    append_utf8(c, cell);
  }
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
    problem_here("\"" + character + "\" (" + code + ") has no code in " + charset.name());
  }
  cells += ps_string_escape(converted, false, true);
  cells += '\0';
}

void DELIMITED_TEXT::problem_here(const std::string& what) {
  if (++problem_count > kProblemsListed) return;
  problems.push_back(file_name + ": row " + std::to_string(row) + ", column " +
                     std::to_string(col) + ": " + what + "\n");
}
