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

constexpr size_t kFitCapacity = 15;
constexpr size_t kRefptCapacity = 15;
constexpr size_t kHomeDirCapacity = 255;

void reset_options();
