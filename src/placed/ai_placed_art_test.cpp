#include "placed/ai_placed_art.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "document/ai_document.h"
#include "document/layer.h"
#include "driver/diagnostics.h"
#include "driver/options.h"
#include "placed/placed_art_replace.h"
#include "support/output.h"

namespace {

const char kDefaultPlacement[] =
    "[1.000000 0.000000 0.000000 1.000000 0.000000 0.000000] "
    "0.000000 0.000000 300.000000 300.000000";

std::string document_bytes(const std::vector<std::string>& lines) {
  std::string bytes = "%!PS-Adobe-3.0\r";
  for (const std::string& line : lines) bytes += line + "\r";
  return bytes + "%%EOF\r";
}

// The six lines a block is written as.
std::string block(int file_type, const std::string& placement, const std::string& file) {
  return "%AI5_BeginPlace\r%%FileType:" + std::to_string(file_type) + "\r" + placement + "\r" +
         file + "`\r~\r%AI5_EndPlace\r";
}

// Sets up a placed-art object on the given lines (the first holds "%AI5_BeginPlace") and
// returns what it prints.
std::string rewrite(const std::vector<std::string>& lines) {
  AI_DOCUMENT doc(document_bytes(lines));
  AI_PLACED_ART art;
  int next = -1;
  art.setup(doc, 1, doc.line_count() - 1, &next);
  EXPECT_EQ(art.last_line, next);
  Output out;
  int last = -1;
  art.print_new(doc, out, &last);
  EXPECT_EQ(art.last_line, last);
  return out.text();
}

std::string error_of(const std::vector<std::string>& lines) {
  try {
    rewrite(lines);
  } catch (const Error& error) {
    return error.what();
  }
  return "(nothing thrown)";
}

}  // namespace

TEST(PlacedArtTest, WritesTheBlockAnewFromItsPlacement) {
  reset_options();
  EXPECT_EQ(
      block(0,
            "[1.000000 0.000000 0.000000 1.000000 100.000000 200.000000] "
            "0.000000 0.000000 50.000000 80.000000",
            "(Disk:Art:TX-1-2.eps)"),
      rewrite({"%AI5_BeginPlace", "%%FileType: 1", "%%Title: dropped",
               "[1 0 0 1 100 200] 0 0 50 80 (Disk:Art:TX-1-2.eps) `", "%%Other", "%AI5_EndPlace"}));
}

TEST(PlacedArtTest, FileTypeIsTheNumberBeforeTheComment) {
  reset_options();
  EXPECT_EQ(block(3, kDefaultPlacement, ""),
            rewrite({"%AI5_BeginPlace", "3 %%FileType:", "%AI5_EndPlace"}));
  EXPECT_EQ(block(0, kDefaultPlacement, ""),
            rewrite({"%AI5_BeginPlace", "abc %%FileType:", "%AI5_EndPlace"}));
  EXPECT_EQ(block(0, kDefaultPlacement, ""), rewrite({"%AI5_BeginPlace", "%AI5_EndPlace"}));
}

TEST(PlacedArtTest, BeginAndEndOnOneLineGiveTheDefaults) {
  reset_options();
  EXPECT_EQ(block(0, kDefaultPlacement, ""),
            rewrite({"%AI5_BeginPlace 5 %%FileType: [2 0 0 2 1 1] 0 0 1 1 (x) ` %AI5_EndPlace"}));
}

TEST(PlacedArtTest, PlacementWordsMaySpreadOverLines) {
  reset_options();
  EXPECT_EQ(block(2,
                  "[1.000000 0.000000 0.000000 1.000000 100.000000 200.000000] "
                  "0.000000 0.000000 50.000000 80.000000",
                  "(a b.eps)"),
            rewrite({"%AI5_BeginPlace 2 %%FileType:", "[1 0 0 1 100 200] 0 0 50 80", "(a b.eps) `",
                     "%AI5_EndPlace"}));
}

TEST(PlacedArtTest, BracketCharactersAreCutWithoutACheck) {
  reset_options();
  // Twenty words before the placement: only the eleven before the backquote count.
  std::string noise;
  for (int i = 0; i < 20; ++i) noise += "w" + std::to_string(i) + " ";
  EXPECT_EQ(block(0,
                  "[5.000000 0.500000 -0.500000 2.000000 3.250000 7.000000] "
                  "-1.000000 0.000000 10.000000 0.000000",
                  "(f)"),
            rewrite({"%AI5_BeginPlace", noise + "95 .5 -.5 2 3.25 78 -1 abc 10 z (f) `",
                     "%AI5_EndPlace"}));
}

TEST(PlacedArtTest, LaterBackquoteReplacesTheEarlier) {
  reset_options();
  EXPECT_EQ(block(0,
                  "[2.000000 0.000000 0.000000 2.000000 0.000000 0.000000] "
                  "1.000000 1.000000 2.000000 2.000000",
                  "(second)"),
            rewrite({"%AI5_BeginPlace", "[1 0 0 1 0 0] 0 0 9 9 (first) `",
                     "[2 0 0 2 0 0] 1 1 2 2 (second) `", "%AI5_EndPlace"}));
}

TEST(PlacedArtTest, MissingOperandsReadAsEmpty) {
  reset_options();
  // Words before the backquote: "%AI5_BeginPlace" (ury, which reads as 0) and the file.
  EXPECT_EQ(block(0,
                  "[0.000000 0.000000 0.000000 0.000000 0.000000 0.000000] "
                  "0.000000 0.000000 0.000000 0.000000",
                  "(a.eps)"),
            rewrite({"%AI5_BeginPlace", "(a.eps) `", "%AI5_EndPlace"}));
  EXPECT_EQ(block(0,
                  "[0.000000 0.000000 0.000000 0.000000 0.000000 0.000000] "
                  "0.000000 0.000000 0.000000 0.000000",
                  "%AI5_BeginPlace"),
            rewrite({"%AI5_BeginPlace `", "%AI5_EndPlace"}));
}

TEST(PlacedArtTest, RemovedOnlyWithoutDataAndWithRm) {
  reset_options();
  AI_DOCUMENT doc(document_bytes({"%AI5_BeginPlace", "%AI5_EndPlace"}));
  AI_PLACED_ART art;
  int next = 0;
  art.setup(doc, 1, doc.line_count() - 1, &next);
  art.replace->no_data = 1;
  Output kept;
  art.print_new(doc, kept, &next);
  EXPECT_EQ(block(0, kDefaultPlacement, ""), kept.text());

  option_rm = 1;
  Output removed;
  art.print_new(doc, removed, &next);
  EXPECT_EQ("", removed.text());
  EXPECT_EQ(2, next);

  art.replace->no_data = 0;
  Output with_data;
  art.print_new(doc, with_data, &next);
  EXPECT_EQ(block(0, kDefaultPlacement, ""), with_data.text());
  reset_options();
}

TEST(PlacedArtTest, Errors) {
  reset_options();
  EXPECT_EQ("cannot find end of placed art\n",
            error_of({"%AI5_BeginPlace", "[1 0 0 1 0 0] 0 0 1 1 (a) `"}));
  EXPECT_EQ("cannot find end of placed art\n", error_of({"%AI5_BeginPlace %AI5_EndPlaceX"}));
  EXPECT_EQ("STACK_OBJ::str size error\n",
            error_of({"%AI5_BeginPlace", std::string(1024, 'w'), "%AI5_EndPlace"}));
  EXPECT_EQ(block(0, kDefaultPlacement, ""),
            rewrite({"%AI5_BeginPlace", std::string(1023, 'w'), "%AI5_EndPlace"}));
}

TEST(PlacedArtTest, LayerPrintsBlocksInPlaceAndOtherLinesVerbatim) {
  reset_options();
  AI_DOCUMENT doc(document_bytes(
      {"%AI5_BeginLayer", "before", "%AI5_BeginPlace", "[1 0 0 1 0 0] 0 0 10 10 (a.eps) `", "junk",
       "%AI5_EndPlace", "between", "%AI5_BeginPlace %AI5_EndPlace", "after", "%AI5_EndLayer--"}));
  AI_LAYER layer;
  int next = 0;
  layer.setup(doc, 1, doc.line_count() - 1, &next);
  ASSERT_EQ(2, layer.placed_art_count());
  Output out;
  layer.print_new(doc, out);
  EXPECT_EQ("%AI5_BeginLayer\rbefore\r" +
                block(0,
                      "[1.000000 0.000000 0.000000 1.000000 0.000000 0.000000] "
                      "0.000000 0.000000 10.000000 10.000000",
                      "(a.eps)") +
                "between\r" + block(0, kDefaultPlacement, "") + "after\r%AI5_EndLayer--\r",
            out.text());
}
