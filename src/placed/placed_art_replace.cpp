#include "placed/placed_art_replace.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <initializer_list>
#include <optional>
#include <string>

#include "placed/art_source.h"
#include "placed/eps_path.h"
#include "placed/epsf_info.h"
#include "placed/print_checks.h"
#include "support/error.h"
#include "support/numbers.h"
#include "support/output.h"
#include "support/patterns.h"
#include "support/report.h"
#include "support/settings.h"
#include "support/stack.h"
#include "support/strings.h"
#include "support/token.h"
#include "table/tab_text.h"
#include "template/template.h"

namespace {

// The backquote takes eleven operands; a few more words are kept than it needs.
constexpr int kWordsKept = 16;
constexpr double kMaxScale = 128.0;
constexpr double kMinScale = 1.0 / 128.0;

struct POINT {
  double x;
  double y;
};

struct EXTENT {
  double min_x;
  double max_x;
  double min_y;
  double max_y;
};

// The point (x, y) through the PostScript matrix [a b c d tx ty].
POINT map(const double m[6], double x, double y) {
  return {m[0] * x + m[2] * y + m[4], m[1] * x + m[3] * y + m[5]};
}

// The corners of a box through the matrix: lower left, upper left, upper right, lower right.
void corners(const double m[6], double llx, double lly, double urx, double ury, POINT out[4]) {
  out[0] = map(m, llx, lly);
  out[1] = map(m, llx, ury);
  out[2] = map(m, urx, ury);
  out[3] = map(m, urx, lly);
}

EXTENT extent(const POINT p[4]) {
  return {AI_PLACED_ART_REPLACE::getMinimum(p[0].x, p[1].x, p[2].x, p[3].x),
          AI_PLACED_ART_REPLACE::getMaximum(p[0].x, p[1].x, p[2].x, p[3].x),
          AI_PLACED_ART_REPLACE::getMinimum(p[0].y, p[1].y, p[2].y, p[3].y),
          AI_PLACED_ART_REPLACE::getMaximum(p[0].y, p[1].y, p[2].y, p[3].y)};
}

// How far the scaled art must move to meet the frame at the reference point; the centre,
// unless a corner is named, is the middle of the first diagonal of each.
POINT refpt_offset(const std::string& refpt, const POINT frame[4], const EXTENT& f,
                   const POINT art[4], const EXTENT& e) {
  if (refpt == "lowerleft") return {f.min_x - e.min_x, f.min_y - e.min_y};
  if (refpt == "lowerright") return {f.max_x - e.max_x, f.min_y - e.min_y};
  if (refpt == "upperright") return {f.max_x - e.max_x, f.max_y - e.max_y};
  if (refpt == "upperleft") return {f.min_x - e.min_x, f.max_y - e.max_y};
  return {(frame[2].x + frame[0].x) / 2 - (art[2].x + art[0].x) / 2,
          (frame[2].y + frame[0].y) / 2 - (art[2].y + art[0].y) / 2};
}

// The file string's base name less its closing parenthesis.
std::string base_name_of(const std::string& file_string) {
  std::string name(basename(file_string));
  if (!name.empty()) name.pop_back();
  return name;
}

std::string with_scale(const char* format, double scale) {
  char text[400];
  std::snprintf(text, sizeof text, format, scale);
  return text;
}

}  // namespace

void AI_PLACED_ART_REPLACE::setup(const TEMPLATE& tpl, int first, int last) {
  if (tpl.keeps_bytes()) {
    kept_placement = std::make_unique<KEPT_PLACEMENT>();
    kept_placement->setup(tpl, first, last, *this);
    return;
  }
  STACK stack;
  TOKEN token;
  for (int i = first; i < last; ++i) {
    token.init(tpl.line(i), " ");
    std::string_view word;
    while (token.next(&word)) {
      stack.push_bounded(word, kWordsKept);
      read_word(stack);
    }
  }
}

// The placement is written "[a b c d tx ty] llx lly urx ury (file) `": the brackets stick
// to the first and sixth numbers.
void AI_PLACED_ART_REPLACE::read_word(const STACK& stack) {
  const std::string_view word = stack.operand(0);
  if (word == "`") {
    std::string_view a = stack.operand(11);
    if (!a.empty()) a.remove_prefix(1);
    std::string_view ty = stack.operand(6);
    if (!ty.empty()) ty.remove_suffix(1);
    setup_bquote(a, stack.operand(10), stack.operand(9), stack.operand(8), stack.operand(7), ty,
                 stack.operand(5), stack.operand(4), stack.operand(3), stack.operand(2),
                 stack.operand(1));
  } else if (word == "%%FileType:") {
    file_type = to_int(stack.operand(1));
  }
}

void AI_PLACED_ART_REPLACE::setup_bquote(std::string_view a, std::string_view b, std::string_view c,
                                         std::string_view d, std::string_view tx,
                                         std::string_view ty, std::string_view llx,
                                         std::string_view lly, std::string_view urx,
                                         std::string_view ury, std::string_view file) {
  bquote.setup(to_double(a), to_double(b), to_double(c), to_double(d), to_double(tx), to_double(ty),
               to_double(llx), to_double(lly), to_double(urx), to_double(ury), std::string(file));
}

void AI_PLACED_ART_REPLACE::print(Output& out) const {
  if (removed) return;
  out.printf("%s%s", "%AI5_BeginPlace", "\r");
  out.printf("%s%d%s", "%%FileType:", file_type, "\r");
  bquote.print(out);
  out.printf("%s%s", kEndOperator, "\r");
  out.printf("%s%s", "%AI5_EndPlace", "\r");
}

// The file string's base name, less its closing parenthesis, is what the placeholder is
// looked for in; an empty file string has none.
void AI_PLACED_ART_REPLACE::setup_tabtxt(const char* id, const TAB_TEXT& table,
                                         ART_REPLACING& with) {
  const std::string name = base_name_of(bquote.file_string);
  const std::optional<std::string> placeholder = find_name_placeholder(id, name);
  if (!placeholder) return;
  if (with.settings.each > 0) {
    analysed.keep([this] {
      return SUBSTITUTED(bquote, no_data, removed, new_file, new_source, new_art_generated,
                         reached);
    });
  }
  reached = true;
  int row = 0;
  int col = 0;
  name_rowcol(name.c_str(), &row, &col);
  const char* cell =
      table.get_field(static_cast<long long>(row) - 1, static_cast<long long>(col) - 1);
  REPORT& report = with.report;
  if (!cell || !*cell) {
    no_data = 1;
    removed = with.settings.rm;
    if (removed) {
      report.add("placed art", *placeholder, row, col, "removed");
    } else {
      report.undone(PROBLEM::KIND::no_cell, "placed art", *placeholder, row, col, "kept: no cell");
    }
    return;
  }
  NEW_ART art = with.source.find(cell, table.escaped());
  if (!art.refused.empty()) {
    fail("%s: row %d, column %d: %s\n", with.table.c_str(), row, col, art.refused.c_str());
  }
  bquote.file_string = std::string("(") + cell + ")";
  new_file = std::move(art.path);
  new_source = &with.source;
  new_art_generated = art.generated;
  if (!art.box) {
    report.undone(PROBLEM::KIND::no_art, "placed art", *placeholder, row, col,
                  "replaced, " + (art.unusable.empty() ? "file not found" : art.unusable));
    return;
  }
  const OP_BQUOTE frame = bquote;
  const std::string fitted = fit(*art.box, with.settings);
  const std::string checks = print_checks(art, frame, bquote);
  if (checks.empty()) {
    report.add("placed art", *placeholder, row, col, "replaced, " + fitted);
  } else {
    report.undone(PROBLEM::KIND::print_check, "placed art", *placeholder, row, col,
                  "replaced, " + fitted + checks);
  }
}

void AI_PLACED_ART_REPLACE::restore_analysed() {
  analysed.restore([this](const SUBSTITUTED& state) {
    std::tie(bquote, no_data, removed, new_file, new_source, new_art_generated, reached) = state;
  });
}

void AI_PLACED_ART_REPLACE::report_unreplaced(REPORT& report) const {
  if (reached) return;
  const std::string name = base_name_of(bquote.file_string);
  const std::optional<std::string> placeholder = find_name_placeholder(nullptr, name);
  if (!placeholder) return;
  int row = 0;
  int col = 0;
  name_rowcol(name.c_str(), &row, &col);
  report.undone(PROBLEM::KIND::no_table, "placed art", *placeholder, row, col,
                "kept: no table for its identifier");
}

// One scale for both axes, the smaller ratio of frame to art ("-fit=min") or the larger,
// then a move to the reference point; the new file's box becomes the placement's box.
std::string AI_PLACED_ART_REPLACE::fit(const EPS_BBOX& art, const SETTINGS& settings) {
  double* const m = bquote.matrix;
  const double* const box = bquote.bbox;
  POINT frame[4];
  POINT placed[4];
  corners(m, box[0], box[1], box[2], box[3], frame);
  corners(m, art.llx, art.lly, art.urx, art.ury, placed);
  const EXTENT f = extent(frame);
  EXTENT e = extent(placed);
  const double art_width = e.max_x - e.min_x;
  const double art_height = e.max_y - e.min_y;
  if (art_width == 0 || art_height == 0) return "not fitted: new art of zero size";
  const double sx = (f.max_x - f.min_x) / art_width;
  const double sy = (f.max_y - f.min_y) / art_height;
  double s;
  if (settings.fit == "min") {
    s = sx < sy ? sx : sy;
  } else {
    s = sx > sy ? sx : sy;
  }
  for (int i = 0; i < 4; ++i) m[i] *= s;
  // Beyond these bounds the art is left scaled where it stood.
  if (s > kMaxScale || s < kMinScale || std::isnan(s)) {
    return with_scale("not moved: scale %f out of range", s);
  }
  corners(m, art.llx, art.lly, art.urx, art.ury, placed);
  e = extent(placed);
  const POINT offset = refpt_offset(settings.refpt, frame, f, placed, e);
  m[4] = offset.x + frame[0].x;
  m[5] = offset.y + frame[0].y;
  bquote.bbox[0] = art.llx;
  bquote.bbox[1] = art.lly;
  bquote.bbox[2] = art.urx;
  bquote.bbox[3] = art.ury;
  return with_scale("fitted with scale %f", s);
}

double AI_PLACED_ART_REPLACE::getMinimum(double v1, double v2, double v3, double v4) {
  double least = v1;
  for (double v : {v2, v3, v4}) {
    if (v < least) least = v;
  }
  return least;
}

double AI_PLACED_ART_REPLACE::getMaximum(double v1, double v2, double v3, double v4) {
  double most = v1;
  for (double v : {v2, v3, v4}) {
    if (v > most) most = v;
  }
  return most;
}
