#include "support/strings.h"

#include <gtest/gtest.h>

#include "driver/diagnostics.h"

TEST(StringsTest, CatAppendsAndStartsFromNothing) {
  std::optional<std::string> text;
  MY_STRING::cat(text, nullptr);
  EXPECT_FALSE(text.has_value());
  MY_STRING::cat(text, "");
  ASSERT_TRUE(text.has_value());
  EXPECT_EQ("", *text);
  MY_STRING::cat(text, "ab");
  MY_STRING::cat(text, nullptr);
  MY_STRING::cat(text, "c");
  EXPECT_EQ("abc", *text);
}

TEST(StringsTest, SplitRepeatsTheLastPiece) {
  MY_STRING cutter;
  int more = -1;
  cutter.split("\t", "a\tb");
  EXPECT_EQ("a", cutter.split(&more));
  EXPECT_EQ(1, more);
  EXPECT_EQ("b", cutter.split(&more));
  EXPECT_EQ(0, more);
  EXPECT_EQ("b", cutter.split(&more));
  EXPECT_EQ(0, more);

  cutter.split("\t", "a\t");
  EXPECT_EQ("a", cutter.split(&more));
  EXPECT_EQ(1, more);
  EXPECT_EQ("", cutter.split(&more));
  EXPECT_EQ(0, more);

  cutter.split("\t", "");
  EXPECT_EQ("", cutter.split(&more));
  EXPECT_EQ(0, more);
}

TEST(StringsTest, ReplaceTakesOccurrencesLeftToRight) {
  EXPECT_EQ("ba", MY_STRING::replace("aaa", "aa", "b"));
  EXPECT_EQ("abc", MY_STRING::replace("a\tb\tc", "\t", ""));
  EXPECT_EQ("x 12 y 12", MY_STRING::replace("x TX-1-1 y TX-1-1", "TX-1-1", "12"));
  EXPECT_EQ("same", MY_STRING::replace("same", "zz", "y"));
}

TEST(StringsTest, ReplaceRefusesAnEmptySearchText) {
  try {
    MY_STRING::replace("abc", "", "x");
    FAIL() << "no error";
  } catch (const Error& error) {
    EXPECT_STREQ("MY_STRING:replace( char*, char*, char* ):empty search text\n", error.what());
  }
}

TEST(StringsTest, DigitRunsInTurn) {
  size_t at = 0;
  const std::string name = "Disk:v2_PH-13-4.eps";
  EXPECT_EQ("2", MY_STRING::next_digits(name, &at));
  EXPECT_EQ("13", MY_STRING::next_digits(name, &at));
  EXPECT_EQ("4", MY_STRING::next_digits(name, &at));
  EXPECT_EQ("", MY_STRING::next_digits(name, &at));
  EXPECT_EQ(name.size(), at);
  at = 0;
  EXPECT_EQ("007", MY_STRING::next_digits("007", &at));
  EXPECT_EQ(3u, at);
}
