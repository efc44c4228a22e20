// Barcodes drawn as EPS art: the symbologies a cell may be encoded in, their sizes in print,
// and the encoding itself (libzint), whose vector output (bars, modules, the human-readable
// digits) becomes PostScript of our own.
#pragma once

#include <optional>
#include <string>
#include <string_view>

struct BARCODE_KIND {
  const char* name;    // as "-barcode=ID:KIND" writes it
  int symbology;       // libzint's number
  size_t min_digits;   // for the numeric symbologies, the digits without and with the check
  size_t max_digits;   // digit; 0 for symbologies that take any data
  double module_mm;    // the module (X dimension) the art is drawn with, in millimetres
  double smallest_mm;  // the smallest module the symbology allows in print
};

// The kind of that name; nothing when no kind has it.
const BARCODE_KIND* barcode_kind(std::string_view name);
// The kinds' names, separated by commas, for messages.
std::string barcode_kind_names();

// A barcode as EPS art: its PostScript and its size in points (the box is 0 0 width height).
struct BARCODE_ART {
  std::string eps;
  double width = 0;
  double height = 0;
};

// The barcode of data in that kind. A data the kind cannot hold (a wrong check digit,
// letters where digits go, too long or too short) gives nothing and its reason in why, in
// the library's words where it gives one.
std::optional<BARCODE_ART> encode_barcode(const BARCODE_KIND& kind, std::string_view data,
                                          std::string& why);
