// What the command line asks of a run. The driver builds one value from the options and
// passes it down by reference; nothing below the driver keeps a setting of its own.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

// How table files are read: bytes as they stand, or Unicode text of tab- or comma-separated
// values converted into the document's encoding.
enum class TABLE_FORM { raw, tsv, csv };

// What a run writes, from the end of the "-out=" name: Illustrator documents, or pages that
// Ghostscript renders from them (a PDF, PNG proofs).
enum class OUTPUT_FORM { document, pdf, png };

struct SETTINGS {
  static constexpr size_t kFitCapacity = 15;
  static constexpr size_t kRefptCapacity = 15;
  static constexpr size_t kHomeDirCapacity = 255;
  static constexpr int kMaxEach = 1024;
  static constexpr int kMaxDpi = 2400;

  bool rx = false;                         // placeholders of the syntax that also names a font
  bool rm = false;                         // remove placeholders and placed art without a cell
  std::string fit = "min";                 // "min" fits new placed art inside its frame
  std::string refpt;                       // the corner of the frame new art is aligned to
  std::string home_dir = "/home/mesoli/";  // placed-art cells are paths below this folder
  bool report = false;                     // report what became of each placeholder
  bool keep = false;                       // copy the template whole, rewrite only what changed
  bool strict = false;                     // write nothing unless every document is complete
  bool sync = false;                       // each file reaches the disk before it takes its name
  TABLE_FORM table = TABLE_FORM::raw;
  std::string encoding;        // the document's text encoding; empty: as the template says
  std::string table_encoding;  // what spreadsheet tables are saved in; empty: UTF-8 or UTF-16
  // Placed-art identifiers whose cells are barcode data, each with its kind's name.
  std::vector<std::pair<std::string, std::string>> barcodes;

  // Batches: one document per block of table rows, written to files named from a pattern.
  int each = 0;          // rows per document; 0: one document from whole tables
  long long skip = 0;    // header rows of every table, never merged
  std::string out;       // where documents go; empty: standard output
  long long shard = 0;   // this process makes documents k with (k - 1) mod shards =
  long long shards = 0;  //   shard - 1; 0: all of them
  OUTPUT_FORM form = OUTPUT_FORM::document;
  int dpi = 150;  // of PNG proofs

  // Set by a process that ends with its run: the document is left to the exit rather than
  // taken apart object by object. Tests and fuzzers, which make many runs, leave it unset.
  bool leave_document_to_exit = false;
};
