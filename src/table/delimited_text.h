// Tables as spreadsheets and databases save them: tab-separated or comma-separated values in
// Unicode text, cells quoted where they hold a separator, a quote or a line break. Every
// cell is converted into the document's encoding and escaped as the body of a PostScript
// string, so that no cell can break the string it is inserted into.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "table/unicode_text.h"

class CHARSET;
class TAB_TEXT;

class DELIMITED_TEXT {
 public:
  // separator is '\t', or kCommaOrSemicolon for the one of ',' and ';' that the first row
  // uses more often outside quotes (',' when it uses neither); file_name is the table's
  // name in messages, as given.
  static constexpr char32_t kCommaOrSemicolon = 0;
  DELIMITED_TEXT(std::string_view bytes, char32_t separator, CHARSET& charset,
                 const std::string& file_name);
  // Reads every row into table. A character the encoding has no code for, bytes that spell
  // no character, a NUL, a quoted cell without its closing quote or with text after it fail
  // the run once the whole table is read, with a line for each (the first 20, then how
  // many more) naming the file, the row and the column.
  void read(TAB_TEXT& table);
  // The separator the cells were read at.
  char32_t separator_read() const { return separator; }

 private:
  void read_row();
  char32_t read_cell();
  char32_t read_quoted_cell();
  char32_t end_of_line(char32_t c);
  char32_t skip_to_cell_end();
  void add(char32_t c);
  void finish_cell();
  // Notes a problem of the cell being read; reading goes on.
  void problem_here(const std::string& what);
  char32_t first_row_separator() const;

  UNICODE_TEXT text;
  char32_t separator;
  CHARSET& charset;
  const std::string file_name;
  long long row = 0;  // the row and column of the cell being read, counted from 1
  long long col = 0;
  std::string cell;       // the cell's text in UTF-8
  std::string converted;  // and in the document's encoding
  std::string cells;      // every finished cell, escaped, each ended by a NUL
  std::vector<size_t> row_sizes;
  std::vector<std::string> problems;
  size_t problem_count = 0;
  bool malformed_seen = false;
};
