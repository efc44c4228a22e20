// How "-keep" reads and rewrites a placed-art block. The placement
// "[a b c d tx ty] llx lly urx ury (file) `" is read with the PostScript tokenizer, outside
// the document the block may embed, into the same model as the default reading; the
// substitution and fitting are the model's own. A block that was swapped gets only its
// changed numbers and its file name rewritten, each in place; when it embeds the old art,
// the new EPS file's PostScript is embedded between its own "%%BeginDocument" and
// "%%EndDocument" lines instead. Art that exists only embedded (a barcode) is embedded in
// a block that linked its art too, as Illustrator embeds placed files: its document follows
// the placement's line. Every other line of the block is kept.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "support/ps_tokens.h"

class AI_PLACED_ART_REPLACE;
class ART_SOURCE;
class PATCHES;
class REPORT;
class TEMPLATE;

// A rewritten number: fixed-point with at most six decimals, without trailing zeros.
std::string placement_number(double value);

class KEPT_PLACEMENT {
 public:
  // Reads lines first..last-1 of the block (last holds "%AI5_EndPlace") into art.
  void setup(const TEMPLATE& tpl, int first, int last, AI_PLACED_ART_REPLACE& art);
  // The patches that bring the block's bytes to what art holds now, the new art's
  // PostScript taken from its source. Art that cannot be embedded leaves the old embedded
  // art, with a note in the report.
  void patch(const AI_PLACED_ART_REPLACE& art, REPORT& report, PATCHES& patches) const;

 private:
  void embed(const std::string& cell, const AI_PLACED_ART_REPLACE& art, REPORT& report,
             PATCHES& patches) const;
  // Embeds postscript after the placement's line of a block that embedded nothing.
  void embed_in_linked(const std::string& name, std::string_view postscript,
                       PATCHES& patches) const;

  std::string_view block;  // the block's lines, line ends included
  bool placed = false;     // whether the placement was read
  PS_TOKEN numbers[10];    // a b c d tx ty llx lly urx ury
  double numbers_read[10] = {};
  PS_TOKEN file{PS_KIND::string, {}};
  PS_TOKEN backquote{PS_KIND::executable, {}};
  std::string file_read;  // the model's file string as read
  // The embedded document: its "%%BeginDocument" line's text, its line end, and its body
  // up to the "%%EndDocument" line; empty when the block embeds none.
  std::string_view begin_document;
  std::string_view begin_line_end;
  std::string_view document_body;
};
