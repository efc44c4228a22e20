#include "support/patterns.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <utility>
#include <vector>

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

// Where runs may split a placeholder (a tab at each joint); the golden cases show the
// placeholders of either syntax whole and split in the common places.
TEST(PatternsTest, FirstMatchOfEachSyntax) {
  AI_REGEX_PATTERN plain;
  AI_REGEX_PATTERN2 font;
  const struct {
    std::string pattern;  // copied: each object holds its last pattern only
    const char* text;
    const char* match;
  } cases[] = {
      {plain.create_pattern("TX", "\t"), "T\tX-2-3\tY", "T\tX-2-3\t"},  // split identifier
      {plain.create_pattern("TX", "\t"), "TX-1\t2-3", "TX-1\t2-3"},     // split row
      {plain.create_pattern("TX", "\t"), "TX-\t\t2-3", "(none)"},       // two tabs in a row
      {plain.create_pattern("TX", "\t"), "XTX-1-2", "TX-1-2"},          // no anchors
      {plain.create_pattern("\t"), "A\tB-1-2", "A\tB-1-2"},
      {plain.create_pattern("\t"), "ab-1-2", "(none)"},
      {font.create_pattern("TX", "\t"), "TX-2-3-Ar\tial_", "TX-2-3-Ar\tial_"},
      {font.create_pattern("TX", "\t"), "TX-2-3\t\t-F_", "TX-2-3\t\t-F_"},  // a tab after each
      {font.create_pattern("TX", "\t"), "TX-2-3 and more", "(none)"},
      {font.create_pattern(nullptr), "TX-2-3", "(none)"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.match, first_match(c.pattern.c_str(), c.text)) << c.text;
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

// Row, column and font of each syntax, and of placed-art names (where tabs are no
// separators): "row col font".
TEST(PatternsTest, RowColumnAndFont) {
  auto cell = [](const char* match, bool with_font) {
    long long row = -1;
    long long col = -1;
    std::string font = "-";
    placeholder_cell(match, with_font, &row, &col);
    if (with_font) rowcol_font(match, &row, &col, &font);
    return std::to_string(row) + " " + std::to_string(col) + " " + font;
  };
  EXPECT_EQ("12 3 -", cell("TX-1\t2-3\t", false));   // digits split over runs are read whole
  EXPECT_EQ("45 45 -", cell("TX-\t4\t\t5", false));  // one number names row and column
  EXPECT_EQ("2 5 -", cell("T2-5-6", false));         // digits of the identifier come first
  EXPECT_EQ("2147483647 1 -", cell("TX-99999999999999999999-1", false));  // names no cell
  EXPECT_EQ("2 3 ", cell("TX-2-3_", true));
  EXPECT_EQ("10 4 Rimba-Bold", cell("TX-1\t0-4-Rimba-Bold\t_", true));
  auto name = [](const char* text) {
    int row = -1;
    int col = -1;
    name_rowcol(text, &row, &col);
    return std::to_string(row) + " " + std::to_string(col);
  };
  EXPECT_EQ("7 7", name("TX-7"));  // one number names row and column
  EXPECT_EQ("2147483647 42", name("TX-99999999999-0042"));
}

// The cheap tests that decide which walk a text takes, and whether it needs one at all.
TEST(PatternsTest, PlainIdentifiersAndDashes) {
  const std::pair<const char*, bool> identifiers[] = {
      {"TX", true},   {"tx9", true},       {"", true},   {"T-X", false}, {"T_X", false},
      {"T X", false}, {"\xc3\x89", false}, {"@", false}, {"[", false},   {"`", false},
  };
  for (const auto& [id, plain] : identifiers) EXPECT_EQ(plain, plain_identifier(id)) << id;
  const std::pair<std::string_view, bool> texts[] = {
      {"TX-1-2", true}, {"--", true}, {"a-\tb-", true}, {"TX-12", false}, {"-", false}, {"", false},
  };
  for (const auto& [text, two] : texts) EXPECT_EQ(two, holds_two_dashes(text)) << text;
}
