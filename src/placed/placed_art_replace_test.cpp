#include "placed/placed_art_replace.h"

#include <gtest/gtest.h>
#include <cmath>
#include <limits>
#include <string>
#include <utility>

#include "driver/diagnostics.h"
#include "driver/options.h"
#include "support/printed.h"
#include "support/test_temp_dir.h"
#include "table/tab_text.h"

namespace {

struct FRAME {
  double matrix[6];
  double box[4];
};

const FRAME kTall = {{1, 0, 0, 1, 0, 0}, {0, 0, 100, 200}};
const FRAME kWide = {{1, 0, 0, 1, 0, 0}, {0, 0, 200, 100}};

// The i-th line (from 0) of what the object prints, without its "\r".
std::string printed_line(const AI_PLACED_ART_REPLACE& art, int index) {
  const std::string text = printed(art);
  size_t start = 0;
  for (int i = 0; i < index && start != std::string::npos; ++i) {
    start = text.find('\r', start);
    if (start != std::string::npos) ++start;
  }
  if (start == std::string::npos || start >= text.size()) return "(no line)";
  return text.substr(start, text.find('\r', start) - start);
}

class PlacedArtReplaceTest : public ::testing::Test {
 protected:
  void SetUp() override {
    reset_options();
    option_home_dir = dir.path() + "/";
  }
  void TearDown() override { reset_options(); }

  // The EPS file that the cell "Disk:Art:new.eps" names, with the given box.
  void new_art(const std::string& box) {
    dir.write("Disk/Art/new.eps", "%!PS-Adobe-3.0 EPSF-3.0\r%%HiResBoundingBox: " + box + "\r");
  }

  void place(const FRAME& frame, const std::string& file = "(Disk:Art:PH-1-1.eps)") {
    const double* m = frame.matrix;
    const double* b = frame.box;
    art.bquote.setup(m[0], m[1], m[2], m[3], m[4], m[5], b[0], b[1], b[2], b[3], file);
  }

  void replace(const char* id, const std::string& table_bytes) {
    TAB_TEXT table;
    table.init_from_bytes(table_bytes);
    art.setup_tabtxt(id, table);
  }

  // The placement line after fitting the frame to an art box, with the first cell.
  std::string fitted(const FRAME& frame, const std::string& art_box) {
    new_art(art_box);
    place(frame);
    replace("PH", "Disk:Art:new.eps\n");
    EXPECT_EQ("(Disk:Art:new.eps)", art.bquote.file_string);
    return printed_line(art, 2);
  }

  TEST_TEMP_DIR dir;
  AI_PLACED_ART_REPLACE art;
};

}  // namespace

TEST_F(PlacedArtReplaceTest, RotatedFrame) {
  // A quarter turn: the frame is 200 wide and 100 high on the page.
  EXPECT_EQ(
      "[0.000000 2.000000 -2.000000 0.000000 -50.000000 0.000000] "
      "0.000000 0.000000 50.000000 50.000000",
      fitted({{0, 1, -1, 0, 0, 0}, {0, 0, 100, 200}}, "0 0 50 50"));
}

TEST_F(PlacedArtReplaceTest, ScaleLimitsAreInclusive) {
  EXPECT_EQ(
      "[128.000000 0.000000 0.000000 128.000000 0.000000 64.000000] "
      "0.000000 0.000000 1.000000 1.000000",
      fitted({{1, 0, 0, 1, 0, 0}, {0, 0, 128, 256}}, "0 0 1 1"));
  fitted({{1, 0, 0, 1, 0, 0}, {0, 0, 1, 2}}, "0 0 128 128");
  EXPECT_EQ(1.0 / 128, art.bquote.matrix[0]);
  EXPECT_EQ(1.0 / 128, art.bquote.matrix[3]);
  EXPECT_EQ(0.5, art.bquote.matrix[5]);
  EXPECT_EQ(128, art.bquote.bbox[2]);
}

TEST_F(PlacedArtReplaceTest, ScaleBeyondLimitsOnlyScales) {
  EXPECT_EQ(
      "[129.000000 0.000000 0.000000 129.000000 0.000000 0.000000] "
      "0.000000 0.000000 129.000000 258.000000",
      fitted({{1, 0, 0, 1, 0, 0}, {0, 0, 129, 258}}, "0 0 1 1"));
  fitted({{1, 0, 0, 1, 3, 4}, {0, 0, 1, 2}}, "0 0 129 129");
  EXPECT_EQ(1.0 / 129, art.bquote.matrix[0]);
  EXPECT_EQ(3, art.bquote.matrix[4]);
  EXPECT_EQ(4, art.bquote.matrix[5]);
  EXPECT_EQ(2, art.bquote.bbox[3]);

  const double inf = std::numeric_limits<double>::infinity();
  fitted({{1, 0, 0, 1, 3, 4}, {inf, inf, inf, inf}}, "0 0 1 1");  // a frame of NaN corners
  EXPECT_TRUE(std::isnan(art.bquote.matrix[0]));
  EXPECT_EQ(3, art.bquote.matrix[4]);
  EXPECT_EQ(inf, art.bquote.bbox[0]);
}

TEST_F(PlacedArtReplaceTest, UnusableNewArtChangesOnlyTheFileString) {
  const std::string old_placement =
      "[1.000000 0.000000 0.000000 1.000000 0.000000 0.000000] "
      "0.000000 0.000000 100.000000 200.000000";
  EXPECT_EQ(old_placement, fitted(kTall, "0 0 0 50"));
  EXPECT_EQ(old_placement, fitted(kTall, "0 0 50 0"));
  EXPECT_EQ(old_placement, fitted(kTall, "(atend)"));
  std::filesystem::remove(dir.path() + "/Disk/Art/new.eps");
  place(kTall);
  replace("PH", "Disk:Art:new.eps\n");
  EXPECT_EQ("(Disk:Art:new.eps)", art.bquote.file_string);
  EXPECT_EQ(old_placement, printed_line(art, 2));
  EXPECT_EQ(0, art.no_data);
}

TEST_F(PlacedArtReplaceTest, CellChoosesTheFile) {
  new_art("0 0 50 50");
  const std::string table = "a\tb\tc\nd\te\tDisk:Art:new.eps\n";
  const std::string fitted_line =
      "[2.000000 0.000000 0.000000 2.000000 0.000000 50.000000] "
      "0.000000 0.000000 50.000000 50.000000";
  for (const char* file :
       {"(Disk:Art:PH-2-3.eps)", "(PH-2-3.eps)", "(Disk:v2_PH-3-4.eps)", "(Disk\\v2_PH-3-4.eps)"}) {
    place(kTall, file);
    replace("PH", table);
    EXPECT_EQ("(Disk:Art:new.eps)", art.bquote.file_string) << file;
    EXPECT_EQ(fitted_line, printed_line(art, 2)) << file;
  }
  place(kTall, "(Disk:Art:PH-1-1.eps)");
  replace("PH", "Disk:Caf\\351.eps\n");
  EXPECT_EQ("(Disk:Caf\\351.eps)", art.bquote.file_string);
  dir.write("Disk/Caf:e9.eps", "%%HiResBoundingBox: 0 0 50 50\n");
  place(kTall, "(Disk:Art:PH-1-1.eps)");
  replace("PH", "Disk:Caf\\351.eps\n");
  EXPECT_EQ(fitted_line, printed_line(art, 2));
}

TEST_F(PlacedArtReplaceTest, NamesWithoutThePlaceholderAreLeftAlone) {
  new_art("0 0 50 50");
  const std::pair<const char*, const char*> cases[] = {{"TX", "(Disk:Art:PH-1-1.eps)"},
                                                       {"PH", "(PH-1-1:Art.eps)"},
                                                       {"PH", ""},
                                                       {"PH", "(Disk:PH-1.eps)"}};
  for (const auto& [id, file] : cases) {
    place(kTall, file);
    replace(id, "Disk:Art:new.eps\n");
    EXPECT_EQ(file, art.bquote.file_string);
    EXPECT_EQ(100, art.bquote.bbox[2]);
    EXPECT_EQ(0, art.no_data);
  }
}
