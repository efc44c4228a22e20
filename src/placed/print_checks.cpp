#include "placed/print_checks.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

constexpr double kMinimumDpi = 150;
constexpr double kPointsPerInch = 72;
// Rounding of the written placement, six decimals, is no overlap.
constexpr double kTolerance = 1e-5;

struct EXTENT {
  double min_x = INFINITY;
  double max_x = -INFINITY;
  double min_y = INFINITY;
  double max_y = -INFINITY;
};

// A placement's box through its matrix.
EXTENT extent_of(const OP_BQUOTE& p) {
  EXTENT e;
  const double* m = p.matrix;
  for (const double x : {p.bbox[0], p.bbox[2]}) {
    for (const double y : {p.bbox[1], p.bbox[3]}) {
      const double px = m[0] * x + m[2] * y + m[4];
      const double py = m[1] * x + m[3] * y + m[5];
      e = {std::min(e.min_x, px), std::max(e.max_x, px), std::min(e.min_y, py),
           std::max(e.max_y, py)};
    }
  }
  return e;
}

bool inside(const EXTENT& art, const EXTENT& frame) {
  return art.min_x >= frame.min_x - kTolerance && art.max_x <= frame.max_x + kTolerance &&
         art.min_y >= frame.min_y - kTolerance && art.max_y <= frame.max_y + kTolerance;
}

std::string printf_text(const char* format, double a, double b = 0, double c = 0) {
  char text[160];
  std::snprintf(text, sizeof text, format, a, b, c);
  return text;
}

std::string barcode_checks(const NEW_ART& art, const OP_BQUOTE& frame, const OP_BQUOTE& placed,
                           double x_scale) {
  std::string found;
  const double module = art.module_mm * x_scale;
  if (module < art.smallest_module_mm - kTolerance) {
    found += printf_text("; print check: barcode module %.3f mm (%.0f %%), below %.3f mm", module,
                         100 * x_scale, art.smallest_module_mm);
  }
  if (!inside(extent_of(placed), extent_of(frame))) {
    found += "; print check: barcode quiet zone outside the frame";
  }
  return found;
}

std::string photo_checks(const NEW_ART& art, const OP_BQUOTE& placed, double x_scale,
                         double y_scale) {
  const double width = (placed.bbox[2] - placed.bbox[0]) * x_scale / kPointsPerInch;
  const double height = (placed.bbox[3] - placed.bbox[1]) * y_scale / kPointsPerInch;
  if (!(width > 0) || !(height > 0)) return "";
  const double dpi = std::min(art.pixels_wide / width, art.pixels_high / height);
  if (dpi >= kMinimumDpi) return "";
  return printf_text("; print check: low resolution: %.0f dpi", std::floor(dpi));
}

}  // namespace

std::string print_checks(const NEW_ART& art, const OP_BQUOTE& frame, const OP_BQUOTE& placement) {
  if (!art.box) return "";
  // How much the placement enlarges the art's own x and y axes on the page.
  const double* m = placement.matrix;
  const double x_scale = std::hypot(m[0], m[1]);
  const double y_scale = std::hypot(m[2], m[3]);
  if (art.module_mm > 0) return barcode_checks(art, frame, placement, x_scale);
  if (art.pixels_wide > 0) return photo_checks(art, placement, x_scale, y_scale);
  return "";
}
