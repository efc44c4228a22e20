// The variable data of a run: a tab-delimited text file cut into records (lines) and
// fields (cells). Rows and columns count from 0 here; placeholders count from 1.
#pragma once

#include <cstddef>
#include <limits>
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
  bool empty() const { return fields.empty(); }

 private:
  std::vector<const char*> fields;
};

class TAB_TEXT {
 public:
  static constexpr int kMaxRecords = 1024;

  // Discards any earlier file, then reads and cuts this one; more than max_records lines
  // fail the run ("overflow rec").
  void init(const char* file_name, size_t max_records = kMaxRecords);
  // Cuts bytes that are already in memory, as init does with a file's bytes.
  void init_from_bytes(std::string bytes, size_t max_records = kMaxRecords,
                       const char* file_name = "the table");
  // Takes cells another reader has cut and escaped as PostScript string bodies: cells holds
  // their texts row by row, each ended by a NUL, and row_sizes the number of cells of each
  // row. No limit on the number of rows.
  void init_from_cells(std::string cells, const std::vector<size_t>& row_sizes);
  // Whether the cells are string bodies escaped by such a reader, rather than bytes as the
  // table's author wrote them.
  bool escaped() const { return cells_escaped; }
  // The cell's text, or nullptr when there is no such cell. Valid until the next init.
  // Rows count within the block (see set_block).
  const char* get_field(long long row, long long col) const;
  // Whether a NUL byte of the file ended the table before the file's end.
  bool cut_at_nul() const { return nul_seen; }
  // The records of the whole table, whatever the block.
  int rec_count() const { return static_cast<int>(recs.size()); }
  // The bytes of the block's records; of the whole table while no block is set.
  size_t byte_count() const;

  // Lets get_field see only the records first..first+count-1, as rows 0..count-1: a batch
  // makes each document from one block of a table read once. Rows past the table's end
  // are missing cells. Every init sets the block back to the whole table.
  void set_block(size_t first, size_t count);

 private:
  static constexpr size_t kWhole = std::numeric_limits<size_t>::max();
  // file_name names the file in the reason of "overflow rec" (Error::reason).
  void setup_rec(size_t max_records, const char* file_name);
  // Where record index begins in the buffer; the buffer's end past the last record.
  size_t record_offset(size_t index) const;

  std::string buffer;
  std::vector<TAB_TEXT_REC> recs;
  bool cells_escaped = false;
  bool nul_seen = false;
  size_t block_first = 0;
  size_t block_count = kWhole;
};
