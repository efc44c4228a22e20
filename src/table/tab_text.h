// The variable data of a run: a tab-delimited text file cut into records (lines) and
// fields (cells). Rows and columns count from 0 here; placeholders count from 1.
#pragma once

#include <string>
#include <vector>

// One line of the table: its fields, in column order, each a NUL-terminated text inside
// the table's buffer.
class TAB_TEXT_REC {
 public:
  // Cuts the line in place at every tab.
  void setup(char* line);
  void add_field(const char* text) { fields.push_back(text); }
  // The text of field col, or nullptr when the record has fewer fields.
  const char* get_field(long long col) const;

 private:
  std::vector<const char*> fields;
};

class TAB_TEXT {
 public:
  static constexpr int kMaxRecords = 1024;

  // Discards any earlier file, then reads and cuts this one.
  void init(const char* file_name);
  // Cuts bytes that are already in memory, as init does with a file's bytes.
  void init_from_bytes(std::string bytes);
  // Takes cells another reader has cut and escaped as PostScript string bodies: cells holds
  // their texts row by row, each ended by a NUL, and row_sizes the number of cells of each
  // row. No limit on the number of rows.
  void init_from_cells(std::string cells, const std::vector<size_t>& row_sizes);
  // Whether the cells are string bodies escaped by such a reader, rather than bytes as the
  // table's author wrote them.
  bool escaped() const { return cells_escaped; }
  // The cell's text, or nullptr when there is no such cell. Valid until the next init.
  const char* get_field(long long row, long long col) const;
  int rec_count() const { return static_cast<int>(recs.size()); }
  size_t byte_count() const { return buffer.size(); }

 private:
  void setup_rec();

  std::string buffer;
  std::vector<TAB_TEXT_REC> recs;
  bool cells_escaped = false;
};
