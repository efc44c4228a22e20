#include "support/patterns.h"

#include <gtest/gtest.h>

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

TEST(PatternsTest, EightFormsAreExact) {
  AI_REGEX_PATTERN plain;
  AI_REGEX_PATTERN2 font;
  EXPECT_STREQ("AB-[0-9]+-[0-9]+", plain.create_pattern("AB", nullptr));
  EXPECT_STREQ("A\t?B\t?-\t?[0-9]+\t?([0-9]+\t?)*-\t?[0-9]+\t?([0-9]+\t?)*",
               plain.create_pattern("AB", "\t"));
  EXPECT_STREQ("[A-Z]+-[0-9]+-[0-9]+", plain.create_pattern(nullptr));
  EXPECT_STREQ("[A-Z]\t?([A-Z]+\t?)*-\t?[0-9]+\t?([0-9]+\t?)*-\t?[0-9]+\t?([0-9]+\t?)*",
               plain.create_pattern("\t"));
  EXPECT_STREQ("AB-[0-9]+-[0-9]+(-([a-zA-Z0-9]|-)*)?_", font.create_pattern("AB", nullptr));
  EXPECT_STREQ(
      "A\t?B\t?-\t?[0-9]+\t?([0-9]+\t?)*-\t?[0-9]+\t?([0-9]+\t?)*\t?(-([a-zA-Z0-9]|-|\t)*)?_",
      font.create_pattern("AB", "\t"));
  EXPECT_STREQ("[A-Z]+-[0-9]+-[0-9]+(-([a-zA-Z0-9]|-)*)?_", font.create_pattern(nullptr));
  EXPECT_STREQ(
      "[A-Z]\t?([A-Z]+\t?)*-\t?[0-9]+\t?([0-9]+\t?)*-\t?[0-9]+\t?([0-9]+\t?)*"
      "(-([a-zA-Z0-9]|-|\t)*)?_",
      font.create_pattern("\t"));
  EXPECT_STREQ("-[0-9]+-[0-9]+", plain.create_pattern("", nullptr));
}

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
