// The process-wide settings, set only by the command line and reset at the start of every
// run, so that one process can drive several runs (tests, fuzzing).
#pragma once

#include <string>

extern int option_rx;                // 1: placeholders of the syntax that also names a font
extern int option_rm;                // 1: remove placeholders and placed art without a cell
extern std::string option_fit;       // "min" fits new placed art inside its frame
extern std::string option_refpt;     // the corner of the frame new placed art is aligned to
extern std::string option_home_dir;  // placed-art cells are paths below this directory
extern int option_report;            // 1: report what became of each placeholder
extern int option_keep;              // 1: copy the template whole, rewrite only what changed

// How table files are read: bytes as they stand, or Unicode text of tab- or comma-separated
// values converted into the document's encoding.
enum class TABLE_FORM { raw, tsv, csv };
extern TABLE_FORM option_table;
extern std::string option_encoding;  // the document's text encoding; empty: as the template says

// Batches: one document per block of table rows, written to files named from a pattern.
extern int option_each;          // rows per document; 0: one document from whole tables
extern long long option_skip;    // header rows of every table, never merged
extern std::string option_out;   // where documents go; empty: standard output
extern long long option_shard;   // this process makes documents k with (k - 1) mod
extern long long option_shards;  //   option_shards = option_shard - 1; 0: all of them

constexpr size_t kFitCapacity = 15;
constexpr size_t kRefptCapacity = 15;
constexpr size_t kHomeDirCapacity = 255;
constexpr int kMaxEach = 1024;

void reset_options();

// Whether an argument is the option that prefix names (options are matched by prefix).
bool starts_with(const std::string& arg, const char* prefix);
// A whole number written in decimal digits alone (at most 18 of them) and at most max.
bool read_decimal(const std::string& text, long long max, long long* value);
