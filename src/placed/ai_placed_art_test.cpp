#include "placed/ai_placed_art.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "document/ai_document.h"
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
  return std::string(out.text());
}

}  // namespace

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
