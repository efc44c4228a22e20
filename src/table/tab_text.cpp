#include "table/tab_text.h"

#include <cstring>

#include "driver/diagnostics.h"
#include "support/file_io.h"

void TAB_TEXT_REC::setup(char* line) {
  char* start = line;
  while (char* tab = std::strchr(start, '\t')) {
    *tab = '\0';
    add_field(start);
    start = tab + 1;
  }
  add_field(start);
}

const char* TAB_TEXT_REC::get_field(long long col) const {
  if (col < 0 || col >= static_cast<long long>(fields.size())) return nullptr;
  return fields[static_cast<size_t>(col)];
}

void TAB_TEXT::init(const char* file_name) {
  init_from_bytes(
      read_whole_file(file_name, "tab text file open error\n", "tab text file read error\n"));
}

void TAB_TEXT::init_from_bytes(std::string bytes) {
  recs.clear();
  cells_escaped = false;
  buffer = std::move(bytes);
  setup_rec();
}

void TAB_TEXT::init_from_cells(std::string cells, const std::vector<size_t>& row_sizes) {
  recs.clear();
  cells_escaped = true;
  buffer = std::move(cells);
  recs.resize(row_sizes.size());
  const char* text = buffer.c_str();
  for (size_t row = 0; row < row_sizes.size(); ++row) {
    for (size_t col = 0; col < row_sizes[row]; ++col) {
      recs[row].add_field(text);
      text += std::strlen(text) + 1;
    }
  }
}

// A line feed ends a record; one at the very end of the file starts no new record. The
// buffer's own terminator ends the last record, so a NUL byte inside the file ends it too.
void TAB_TEXT::setup_rec() {
  char* start = &buffer[0];
  while (*start != '\0') {
    if (recs.size() == kMaxRecords) fail("overflow rec\n");
    char* line_feed = std::strchr(start, '\n');
    if (line_feed) *line_feed = '\0';
    recs.emplace_back();
    recs.back().setup(start);
    if (!line_feed) break;
    start = line_feed + 1;
  }
}

const char* TAB_TEXT::get_field(long long row, long long col) const {
  if (row < 0 || row >= static_cast<long long>(recs.size())) return nullptr;
  return recs[static_cast<size_t>(row)].get_field(col);
}
