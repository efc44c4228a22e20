#include "support/numbers.h"

#include <gtest/gtest.h>
#include <climits>

TEST(NumbersTest, IntegersReadLikeAtoi) {
  EXPECT_EQ(0, to_int(""));
  EXPECT_EQ(0, to_int("abc"));
  EXPECT_EQ(12, to_int("12abc"));
  EXPECT_EQ(-7, to_int("  \t-7"));
  EXPECT_EQ(5, to_int("+5"));
  EXPECT_EQ(2, to_int("2.5"));
  EXPECT_EQ(0, to_int("%_0"));
  EXPECT_EQ(INT_MAX, to_int("2147483647"));
  EXPECT_EQ(INT_MIN, to_int("-2147483648"));
}

TEST(NumbersTest, IntegersOutOfRangeClamp) {
  EXPECT_EQ(INT_MAX, to_int("2147483648"));
  EXPECT_EQ(INT_MAX, to_int(std::string(5000, '9').c_str()));
  EXPECT_EQ(INT_MIN, to_int(("-" + std::string(40, '9')).c_str()));
  EXPECT_EQ(7, to_int(("0000000000000000000000000000" + std::string("7")).c_str()));
}

TEST(NumbersTest, RealsReadLikeAtof) {
  EXPECT_DOUBLE_EQ(0.5, to_double("0.5"));
  EXPECT_DOUBLE_EQ(-2.0, to_double("-2]"));
  EXPECT_DOUBLE_EQ(0.0, to_double(""));
  EXPECT_DOUBLE_EQ(0.0, to_double("("));
  EXPECT_DOUBLE_EQ(841.89, to_double("841.89\t"));
}
