#include "placed/kept_eps_box.h"

#include <gtest/gtest.h>
#include <cstdlib>
#include <string>

// Real files of the shared corpus: a DOS EPS of Illustrator 3.2 that has only a
// %%BoundingBox, read in its PostScript section; and a barcode tool's file whose
// high-resolution box wins over its rounded one. The reasons are the golden cases'.
TEST(KeptEpsBoxTest, BoxesOfTheSharedCorpus) {
  const char* corpus = std::getenv("ORMEL_SHARED_CORPUS");
  if (!corpus) GTEST_SKIP() << "ORMEL_SHARED_CORPUS not set";
  const struct {
    const char* file;
    EPS_BBOX box;
  } cases[] = {
      {"fop-img-tiff-preview_ai32_doseps.eps", {289, 412, 306, 429}},
      {"barcode4j-barcode.eps", {0, 0, 135.6548, 42.525}},
  };
  for (const auto& c : cases) {
    std::string why;
    const std::optional<EPS_BBOX> box = kept_eps_box(std::string(corpus) + "/" + c.file, why);
    if (!box && why == "file not found") GTEST_SKIP() << "no shared corpus";
    ASSERT_TRUE(box) << c.file << ": " << why;
    EXPECT_EQ(c.box.llx, box->llx) << c.file;
    EXPECT_EQ(c.box.lly, box->lly) << c.file;
    EXPECT_EQ(c.box.urx, box->urx) << c.file;
    EXPECT_EQ(c.box.ury, box->ury) << c.file;
  }
}
