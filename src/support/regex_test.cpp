#include "support/regex.h"

#include <gtest/gtest.h>

TEST(RegexTest, WalksMatchesLeftToRight) {
  MY_REGEX regex;
  ASSERT_EQ(1, regex.compile("[0-9]+"));
  regex.init_offset("ab-12-cd-345-x");
  EXPECT_EQ(2, regex.match_count());
  std::string match = "unchanged";
  ASSERT_EQ(1, regex.match_next(match));
  EXPECT_EQ("12", match);
  ASSERT_EQ(1, regex.match_next(match));
  EXPECT_EQ("345", match);
  EXPECT_EQ(0, regex.match_next(match));
  EXPECT_EQ("345", match);
  EXPECT_EQ(0, regex.match_next(match));
  // Counting and testing do not depend on the walk.
  EXPECT_EQ(2, regex.match_count());
  EXPECT_EQ(1, regex.match_yes());
  regex.init_offset("12");
  ASSERT_EQ(1, regex.match_next(match));
  EXPECT_EQ("12", match);
}

TEST(RegexTest, LongSubjectsAreHeldWhole) {
  MY_REGEX regex;
  ASSERT_EQ(1, regex.compile("[A-Z]+-[0-9]+-[0-9]+"));
  std::string subject(50000, 'x');
  subject += "TX-1-2";
  regex.init_offset(subject.c_str());
  std::string match;
  ASSERT_EQ(1, regex.match_next(match));
  EXPECT_EQ("TX-1-2", match);
}

TEST(RegexTest, EmptyMatchesNeverLoop) {
  MY_REGEX regex;
  ASSERT_EQ(1, regex.compile("x*"));
  regex.init_offset("abc");
  EXPECT_EQ(4, regex.match_count());
  std::string match;
  int calls = 0;
  while (regex.match_next(match) && calls < 100) ++calls;
  EXPECT_EQ(4, calls);
}

TEST(RegexTest, InvalidPatternReportsTheLibraryText) {
  MY_REGEX regex;
  EXPECT_EQ(0, regex.compile("("));
  EXPECT_EQ(0, regex.error_text().find("regcomp() error:"));
  EXPECT_GT(regex.error_text().size(), std::string("regcomp() error:\n").size());
  EXPECT_EQ('\n', regex.error_text().back());
  regex.init_offset("(");
  EXPECT_EQ(0, regex.match_yes());
}
