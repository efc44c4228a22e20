// The replaceable part of a text object: the parsed model of a point text whose strings
// hold a placeholder. It takes the cells of every text argument in turn and prints the
// object's lines anew from the model.
#pragma once

#include <memory>
#include <string_view>

#include "text/kept_point_text.h"
#include "text/point_text.h"

class AI_DOCUMENT;
class Output;
class PATCHES;
class TAB_TEXT;

class AI_TEXT_REPLACE {
 public:
  // False only when the lines first..last-1 cannot hold a placeholder in their strings, which
  // spares most text objects of a large document the full parse.
  static bool may_hold_placeholder(const AI_DOCUMENT& doc, int first, int last);
  // Parses the lines first..last-1 (the "TO" line is not read). Returns whether the point
  // text holds a placeholder and so is to be replaced.
  bool setup(const AI_DOCUMENT& doc, int first, int last);
  // The same for "-keep", which rewrites the template's bytes rather than printing anew.
  bool setup_kept(const AI_DOCUMENT& doc, int first, int last);
  void patch_kept(PATCHES& patches) const { kept->patch(point_text, patches); }
  void setup_tabtxt(const char* id, const TAB_TEXT& table) { point_text.setup_tabtxt(id, table); }
  void setup_tabtxt(const TAB_TEXT& table) { point_text.setup_tabtxt(table); }
  void print_new(Output& out) const { point_text.print(out); }
  void report_unreplaced() const { point_text.report_unreplaced(); }
  void restore_analysed() { point_text.restore_analysed(); }

 private:
  AI_POINT_TEXT point_text;
  std::unique_ptr<KEPT_POINT_TEXT> kept;
};
