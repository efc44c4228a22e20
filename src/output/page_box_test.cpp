#include "output/page_box.h"

#include <gtest/gtest.h>
#include <cstdio>
#include <string>

namespace {

// The box as "llx lly urx ury", or "none".
std::string box_of(const std::string& document) {
  const std::optional<PAGE_BOX> box = page_box(document);
  if (!box) return "none";
  char text[128];
  std::snprintf(text, sizeof text, "%g %g %g %g", box->llx, box->lly, box->urx, box->ury);
  return text;
}

}  // namespace

TEST(PageBoxTest, CropAreaThenHighResolutionThenIntegerBox) {
  const std::pair<std::string, const char*> cases[] = {
      {"%!PS-Adobe-3.0\r%%BoundingBox: 30 605 250 815\r%%EndComments\r", "30 605 250 815"},
      {"%!PS\n%%BoundingBox: 1 2 3 4\n%%HiResBoundingBox: 1.5 2.25 3 4\n", "1.5 2.25 3 4"},
      {"%!PS\r\n%%HiResBoundingBox: 1.5 2 3 4\r\n%AI3_Cropmarks: 360.5 292 440.5 307\r\n",
       "360.5 292 440.5 307"},
      // Only the header counts: after %%EndComments or the first line of code, nothing.
      {"%!PS\r%%EndComments\r%%BoundingBox: 1 2 3 4\r", "none"},
      {"%!PS\r/x 1 def\r%%BoundingBox: 1 2 3 4\r", "none"},
      // A box that is not four numbers, or has no area, gives way to the next comment.
      {"%!PS\r%%HiResBoundingBox: 0 0 0 0\r%%BoundingBox: 0 0 8 9\r", "0 0 8 9"},
      {"%!PS\r%%HiResBoundingBox: 1 2 3\r%%BoundingBox: -5 -6 8 9\r", "-5 -6 8 9"},
      {"%!PS\r%%BoundingBox: 1 2 3 4 5\r", "none"},
      {"%!PS\r%%BoundingBox: a b c d\r", "none"},
      {"%!PS\r%%BoundingBox: 5 2 3 4\r", "none"},
      {"", "none"},
      // (atend): the trailer's last comment of the same key.
      {"%!PS\r%%BoundingBox: (atend)\r%%EndComments\r%%BoundingBox: 9 9 9 9\r%%Trailer\r"
       "%%BoundingBox: 1 1 5 5\r%%BoundingBox: 0 0 10 20\r%%EOF\r",
       "0 0 10 20"},
      {"%!PS\r%%BoundingBox: (atend)\r%%EndComments\r%%BoundingBox: 1 1 5 5\r%%EOF\r", "none"},
  };
  for (const auto& [document, expected] : cases) {
    EXPECT_EQ(box_of(document), expected) << document;
  }
}
