// Where the art that a placed-art cell names comes from. A source turns a cell into the art
// a frame takes: the file on disk the block is to point at, the box the art is fitted by,
// and, for "-keep", the PostScript embedded in the block. Each kind of source is one class
// in a file of its own: EPS files below the home folder (eps_file_source), barcodes made
// from the cells (barcode_source).
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "placed/epsf_info.h"

// The art a cell names.
struct NEW_ART {
  std::optional<std::string> path;  // what postscript() knows the art by: the local file
                                    // when the cell names one, the data of a barcode
  std::optional<EPS_BBOX> box;      // the box to fit; nothing when the art cannot be used
  // Art the run makes rather than finds (a barcode): it exists only embedded in the block.
  bool generated = false;
  // Why the cell can never become art (data a barcode cannot hold): the run ends.
  std::string refused;
  // Why the file the cell names cannot be used, for the report, when that is known better
  // than "file not found".
  std::string unusable;
  int pixels_wide = 0;  // a photo's pixels, for its resolution in print
  int pixels_high = 0;
  double module_mm = 0;  // a barcode's module as drawn, and the smallest its symbology allows
  double smallest_module_mm = 0;
};

class ART_SOURCE {
 public:
  virtual ~ART_SOURCE() = default;
  // The art of a cell; string_body: the cell is the body of a PostScript string, as the
  // table readers of spreadsheets write cells.
  virtual NEW_ART find(std::string_view cell, bool string_body) = 0;
  // Only the file of a cell, when it names one: what a batch must never write over.
  virtual std::optional<std::string> path_of(std::string_view cell, bool string_body) const = 0;
  // The PostScript of the art that find() gave path for, as "-keep" embeds it; valid until
  // next_document(). Nothing when it cannot be read.
  virtual std::optional<std::string_view> postscript(const std::string& path) = 0;
  // A document is written: what was read for it may go.
  virtual void next_document() = 0;
};
