#include "table/tab_text.h"

#include <algorithm>
#include <cstring>

#include "support/error.h"
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

void TAB_TEXT::init(const char* file_name, size_t max_records) {
  init_from_bytes(
      read_whole_file(file_name, "tab text file open error\n", "tab text file read error\n"),
      max_records, file_name);
}

void TAB_TEXT::init_from_bytes(std::string bytes, size_t max_records, const char* file_name) {
  recs.clear();
  set_block(0, kWhole);
  cells_escaped = false;
  nul_seen = bytes.find('\0') != std::string::npos;
  buffer = std::move(bytes);
  setup_rec(max_records, file_name);
}

void TAB_TEXT::init_from_cells(std::string cells, const std::vector<size_t>& row_sizes) {
  recs.clear();
  set_block(0, kWhole);
  cells_escaped = true;
  nul_seen = false;
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
void TAB_TEXT::setup_rec(size_t max_records, const char* file_name) {
  char* start = &buffer[0];
  while (*start != '\0') {
    if (recs.size() == max_records) {
      throw Error("overflow rec\n", std::string(file_name) + " has more than " +
                                        std::to_string(max_records) + " rows");
    }
    char* line_feed = std::strchr(start, '\n');
    if (line_feed) *line_feed = '\0';
    recs.emplace_back();
    recs.back().setup(start);
    if (!line_feed) break;
    start = line_feed + 1;
  }
}

const char* TAB_TEXT::get_field(long long row, long long col) const {
  if (row < 0 || static_cast<unsigned long long>(row) >= block_count) return nullptr;
  const size_t index = block_first + static_cast<size_t>(row);
  if (index >= recs.size()) return nullptr;
  return recs[index].get_field(col);
}

void TAB_TEXT::set_block(size_t first, size_t count) {
  block_first = first;
  block_count = count;
}

// Records lie in the buffer one after the other; a record without fields (a spreadsheet
// row of none) begins where the next one does.
size_t TAB_TEXT::record_offset(size_t index) const {
  for (; index < recs.size(); ++index) {
    if (!recs[index].empty()) return static_cast<size_t>(recs[index].get_field(0) - buffer.data());
  }
  return buffer.size();
}

size_t TAB_TEXT::byte_count() const {
  if (block_first == 0 && block_count == kWhole) return buffer.size();
  const size_t first = std::min(block_first, recs.size());
  const size_t end = block_count < recs.size() - first ? first + block_count : recs.size();
  return record_offset(end) - record_offset(first);
}
