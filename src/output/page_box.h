// The page a document prints on, read from its comments: its crop area ("%AI3_Cropmarks:",
// the artboard Illustrator prints), else its "%%HiResBoundingBox:", else its
// "%%BoundingBox:". Ghostscript crops an EPS file to the same high-resolution box, so a
// page made here and Ghostscript's own rendering of the file are the same size.
#pragma once

#include <optional>
#include <string_view>

struct PAGE_BOX {
  double llx = 0;
  double lly = 0;
  double urx = 0;
  double ury = 0;
};

// The box from the header comments (up to "%%EndComments" or the first line that is not a
// comment); a box given as "(atend)" is read from the trailer's comment. Nothing when no
// comment gives four numbers with a positive width and height.
std::optional<PAGE_BOX> page_box(std::string_view document);
