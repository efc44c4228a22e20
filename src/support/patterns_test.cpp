#include "support/patterns.h"

#include <gtest/gtest.h>
#include <climits>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "driver/diagnostics.h"
#include "support/regex.h"

namespace {

// The first match of pattern in text, or "(none)".
std::string first_match(const char* pattern, const std::string& text) {
  MY_REGEX regex;
  if (!regex.compile(pattern)) return "(invalid)";
  regex.init_offset(text.c_str());
  std::string match;
  return regex.match_next(match) ? match : "(none)";
}

}  // namespace

TEST(PatternsTest, PlainSyntaxWithSeparators) {
  AI_REGEX_PATTERN plain;
  const char* tx = plain.create_pattern("TX", "\t");
  EXPECT_EQ("TX-2-3", first_match(tx, "X TX-2-3 Y"));
  EXPECT_EQ("T\tX-2-3\t", first_match(tx, "T\tX-2-3\tY"));  // split identifier
  EXPECT_EQ("TX-1\t2-3", first_match(tx, "TX-1\t2-3"));     // split row
  EXPECT_EQ("(none)", first_match(tx, "TX-\t\t2-3"));       // two separators in a row
  EXPECT_EQ("(none)", first_match(tx, "TY-2-3"));
  EXPECT_EQ("TX-1-2", first_match(tx, "XTX-1-2"));  // no anchors
  const char* any = plain.create_pattern("\t");
  EXPECT_EQ("AB-10-2", first_match(any, "x AB-10-2 y"));
  EXPECT_EQ("A\tB-1-2", first_match(any, "A\tB-1-2"));
  EXPECT_EQ("(none)", first_match(any, "ab-1-2"));
}

TEST(PatternsTest, NewSyntaxNeedsTheClosingUnderscore) {
  AI_REGEX_PATTERN2 font;
  const char* tx = font.create_pattern("TX", "\t");
  EXPECT_EQ("TX-2-3_", first_match(tx, "a TX-2-3_ b"));
  EXPECT_EQ("TX-2-3-Rimba-Bold_", first_match(tx, "TX-2-3-Rimba-Bold_!"));
  EXPECT_EQ("TX-2-3-_", first_match(tx, "TX-2-3-_"));
  EXPECT_EQ("TX-2-3-Ar\tial_", first_match(tx, "TX-2-3-Ar\tial_"));
  EXPECT_EQ("TX-2-3\t\t-F_", first_match(tx, "TX-2-3\t\t-F_"));  // second separator after column
  EXPECT_EQ("(none)", first_match(tx, "TX-2-3 and more"));
  const char* any = font.create_pattern(nullptr);
  EXPECT_EQ("(none)", first_match(any, "TX-2-3"));
  EXPECT_EQ("TX-2-3-F_", first_match(any, "TX-2-3-F_"));
  // The generic plain pattern finds a placeholder inside one of the new syntax.
  AI_REGEX_PATTERN plain;
  EXPECT_EQ("TX-2-3", first_match(plain.create_pattern(nullptr), "TX-2-3-F_"));
}

// The hand-made search finds exactly what the regular expression of any identifier finds.
TEST(PatternsTest, QuickCheckFindsWhatTheGenericPatternFinds) {
  MY_REGEX regex;
  ASSERT_EQ(1, regex.compile(AI_REGEX_PATTERN().create_pattern(nullptr)));
  std::mt19937 random(5);
  const std::vector<std::string> pieces = {"A", "Z", "a", "-", "0", "9", "-1", "AB-1", "\t", " "};
  int found = 0;
  for (int round = 0; round < 20000; ++round) {
    std::string text;
    const int length = static_cast<int>(random() % 8);
    for (int i = 0; i < length; ++i) text += pieces[random() % pieces.size()];
    regex.init_offset(text.c_str());
    const bool expected = regex.match_yes() == 1;
    ASSERT_EQ(expected, holds_plain_placeholder(text)) << text;
    found += expected;
  }
  EXPECT_GT(found, 100);
}

// The walk without a regular expression meets the same placeholders, in the same order, as
// the walk of the expression for the same identifier.
TEST(PatternsTest, PlainWalkFindsWhatTheExpressionFinds) {
  const char* const ids[] = {nullptr, "TX", "T", "", "A1"};
  const std::vector<std::string> pieces = {"T", "X",  "A",  "1",    "B", "x",   "-",   "--",
                                           "0", "42", "\t", "\t\t", " ", "TX-", "-7-", "_"};
  std::mt19937 random(11);
  int found = 0;
  for (int round = 0; round < 20000; ++round) {
    std::string text;
    const int length = static_cast<int>(random() % 12);
    for (int i = 0; i < length; ++i) text += pieces[random() % pieces.size()];
    for (const char* id : ids) {
      MY_REGEX regex;
      ASSERT_EQ(1, regex.compile(placeholder_pattern(id, false)));
      PLAIN_PLACEHOLDERS plain(id);
      regex.init_offset(text.c_str());
      plain.init_offset(text.c_str());
      std::string expected;
      std::string match;
      for (int n = 0; n < 20; ++n) {
        const int more = regex.match_next(expected);
        ASSERT_EQ(more, plain.match_next(match)) << (id ? id : "(any)") << " in " << text;
        if (!more) break;
        ASSERT_EQ(expected, match) << (id ? id : "(any)") << " in " << text;
        ++found;
      }
    }
  }
  EXPECT_GT(found, 1000);
}

TEST(PatternsTest, WhereAPlaceholderMayEnd) {
  const std::pair<std::string, bool> cases[] = {
      {"(TX-1-2) Tx", true},
      {"(TX-1-) Tx", true},    // the next run holds the digits
      {"xTX-1-y Tx", true},    // a word without parentheses
      {"(TX-1-\\) Tx", true},  // a string cut by the line's end
      {std::string("(a-b\0", 5), true},
      {"-", true},
      {"/_Helvetica-Bold 12 Tf\r(Price) Tx", false},
      {"(TX-A) Tx\r(a-bc) Tx", false},
      {"", false},
  };
  for (const auto& [bytes, may] : cases) EXPECT_EQ(may, may_end_placeholder(bytes)) << bytes;
}

// Row and column of each syntax, and of placed-art names (where tabs are no separators).
TEST(PatternsTest, RowColumnAndFont) {
  struct CASE {
    const char* match;
    bool with_font;
    long long row;
    long long col;
    const char* font;
  };
  const CASE cases[] = {
      {"TX-2-3", false, 2, 3, ""},
      {"TX-1\t2-3\t", false, 12, 3, ""},   // digits split over runs are read whole
      {"TX-\t4\t\t5", false, 45, 45, ""},  // one number names row and column
      {"T2-5-6", false, 2, 5, ""},         // digits of the identifier come first
      {"TX-99999999999999999999-1", false, INT_MAX, 1, ""},  // out of range names no cell
      {"TX-2-3_", true, 2, 3, ""},
      {"TX-1\t0-4-Rimba-Bold\t_", true, 10, 4, "Rimba-Bold"},
      {"TX-2-3-_", true, 2, 3, ""},
  };
  for (const CASE& c : cases) {
    long long row = -1;
    long long col = -1;
    placeholder_cell(c.match, c.with_font, &row, &col);
    EXPECT_EQ(c.row, row) << c.match;
    EXPECT_EQ(c.col, col) << c.match;
    std::string font = "unchanged";
    if (c.with_font) rowcol_font(c.match, &row, &col, &font);
    EXPECT_EQ(c.with_font ? c.font : "unchanged", font) << c.match;
  }
  try {
    std::string font;
    rowcol_font("TX_", nullptr, nullptr, &font);
    FAIL() << "no error";
  } catch (const Error& error) {
    EXPECT_STREQ("AI_POINT_TEXT:rowcol_font( char*, int*, int*, char* ):placeholder without row\n",
                 error.what());
  }
  const std::pair<const char*, std::pair<int, int>> names[] = {
      {"(v2_TX-3-4.eps", {2, 3}},
      {"TX-7", {7, 7}},
      {"TX-99999999999-0042", {INT_MAX, 42}},
  };
  for (const auto& [name, expected] : names) {
    int row = -1;
    int col = -1;
    name_rowcol(name, &row, &col);
    EXPECT_EQ(expected, std::make_pair(row, col)) << name;
  }
}
