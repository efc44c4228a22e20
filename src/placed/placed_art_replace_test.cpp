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

TEST_F(PlacedArtReplaceTest, WorkedResults) {
  EXPECT_EQ(
      "[2.000000 0.000000 0.000000 2.000000 0.000000 50.000000] "
      "0.000000 0.000000 50.000000 50.000000",
      fitted(kTall, "0 0 50 50"));
  option_fit = "max";
  EXPECT_EQ(
      "[4.000000 0.000000 0.000000 4.000000 -50.000000 0.000000] "
      "0.000000 0.000000 50.000000 50.000000",
      fitted(kTall, "0 0 50 50"));
  option_fit = "min";
  option_refpt = "upperright";
  EXPECT_EQ(
      "[2.000000 0.000000 0.000000 2.000000 0.000000 100.000000] "
      "0.000000 0.000000 50.000000 50.000000",
      fitted(kTall, "0 0 50 50"));
  option_refpt = "lowerleft";
  EXPECT_EQ(
      "[2.000000 0.000000 0.000000 2.000000 20.000000 40.000000] "
      "0.000000 0.000000 50.000000 50.000000",
      fitted({{1, 0, 0, 1, 0, 0}, {10, 20, 110, 220}}, "0 0 50 50"));
  option_refpt = "upperleft";
  EXPECT_EQ(
      "[0.500000 0.000000 0.000000 0.500000 30.000000 90.000000] "
      "0.000000 0.000000 200.000000 100.000000",
      fitted({{1, 0, 0, 1, 30, 40}, {0, 0, 100, 100}}, "0 0 200 100"));
  option_fit = "max";
  option_refpt.clear();
  EXPECT_EQ(
      "[400.000000 0.000000 0.000000 400.000000 0.000000 0.000000] "
      "0.000000 0.000000 100.000000 200.000000",
      fitted(kTall, "0 0 0.5 0.5"));
}

TEST_F(PlacedArtReplaceTest, FitComparesExactlyMin) {
  option_fit = "MIN";
  EXPECT_EQ(
      "[4.000000 0.000000 0.000000 4.000000 -50.000000 0.000000] "
      "0.000000 0.000000 50.000000 50.000000",
      fitted(kTall, "0 0 50 50"));
}

// The wide frame leaves room across, the tall one upwards: together they tell every
// reference point apart. Anything but the four corner names aligns the centres.
TEST_F(PlacedArtReplaceTest, ReferencePoints) {
  struct CASE {
    const char* refpt;
    const char* wide;
    const char* tall;
  };
  const CASE cases[] = {
      {"lowerleft", "0.000000 0.000000", "0.000000 0.000000"},
      {"lowerright", "100.000000 0.000000", "0.000000 0.000000"},
      {"upperright", "100.000000 0.000000", "0.000000 100.000000"},
      {"upperleft", "0.000000 0.000000", "0.000000 100.000000"},
      {"", "50.000000 0.000000", "0.000000 50.000000"},
      {"center", "50.000000 0.000000", "0.000000 50.000000"},
      {"LowerLeft", "50.000000 0.000000", "0.000000 50.000000"},
  };
  const std::string head = "[2.000000 0.000000 0.000000 2.000000 ";
  const std::string tail = "] 0.000000 0.000000 50.000000 50.000000";
  for (const CASE& c : cases) {
    option_refpt = c.refpt;
    EXPECT_EQ(head + c.wide + tail, fitted(kWide, "0 0 50 50")) << c.refpt;
    EXPECT_EQ(head + c.tall + tail, fitted(kTall, "0 0 50 50")) << c.refpt;
  }
}

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

TEST_F(PlacedArtReplaceTest, MissingOrEmptyCellMarksNoData) {
  for (const char* file :
       {"(Disk:PH-2-1.eps)", "(Disk:PH-1-3.eps)", "(Disk:PH-1-2.eps)", "(Disk:PH-0-1.eps)",
        "(Disk:PH-99999999999-1.eps)", "(Disk:PH-1-99999999999.eps)"}) {
    art = AI_PLACED_ART_REPLACE();
    place(kTall, file);
    replace("PH", "x\t\n");
    EXPECT_EQ(1, art.no_data) << file;
    EXPECT_EQ(file, art.bquote.file_string);
  }
  // Once set, no_data stays although a later table has the cell.
  new_art("0 0 50 50");
  place(kTall, "(Disk:PH-1-1.eps)");
  replace("PH", "Disk:Art:new.eps\n");
  EXPECT_EQ("(Disk:Art:new.eps)", art.bquote.file_string);
  EXPECT_EQ(1, art.no_data);
}

TEST_F(PlacedArtReplaceTest, HomeDirectoryIsJoinedAsGiven) {
  dir.write("preDisk/Art/new.eps", "%%HiResBoundingBox: 0 0 50 50\r");
  option_home_dir = dir.path() + "/pre";
  place(kTall);
  replace("PH", "Disk:Art:new.eps\n");
  EXPECT_EQ(50, art.bquote.bbox[2]);
}

TEST_F(PlacedArtReplaceTest, CellCannotReachAboveTheHomeDirectory) {
  dir.write("out.eps", "%%HiResBoundingBox: 0 0 50 50\r");
  dir.write("home/x/keep", "");
  option_home_dir = dir.path() + "/home/";
  place(kTall);
  replace("PH", "x:..:..:out.eps\n");
  EXPECT_EQ("(x:..:..:out.eps)", art.bquote.file_string);
  EXPECT_EQ(100, art.bquote.bbox[2]);
  EXPECT_EQ(1, art.bquote.matrix[0]);
}

TEST_F(PlacedArtReplaceTest, IdentifierThatIsNoExpression) {
  place(kTall);
  try {
    replace("PH(", "x\n");
    ADD_FAILURE() << "nothing thrown";
  } catch (const Error& error) {
    EXPECT_STREQ("regcomp() error:Unmatched ( or \\(\nAI_PLACED_ART_REPLACE::regex compile error\n",
                 error.what());
  }
}

TEST(PlacedArtRowColTest, MinimumAndMaximumOfFour) {
  EXPECT_EQ(-3, AI_PLACED_ART_REPLACE::getMinimum(2, -1, -3, 0));
  EXPECT_EQ(5, AI_PLACED_ART_REPLACE::getMaximum(2, 5, -3, 5));
}
