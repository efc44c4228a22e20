#include "support/numbers.h"

#include <gtest/gtest.h>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>

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

// Reals take a shortcut when they are plain decimals; every form must still give exactly the
// C library's value, bit for bit.
TEST(NumbersTest, RealsMatchStrtodBitForBit) {
  const char* const fixed[] = {"-0",
                               "-0.000000",
                               "0x1A",
                               "1e3",
                               "1.5e",
                               ".5",
                               "5.",
                               ".",
                               "-.",
                               "+",
                               "inf",
                               "nan",
                               " \t1.25",
                               "9007199254740993",
                               "9007199254740992.5",
                               "0.1",
                               "123456789012345678901",
                               "1.00000000000000000000001"};
  for (const char* text : fixed) {
    double expected = std::strtod(text, nullptr);
    double actual = to_double(text);
    EXPECT_EQ(0, std::memcmp(&expected, &actual, sizeof expected)) << text;
  }
  std::mt19937 random(7);
  for (int i = 0; i < 200000; ++i) {
    std::string text = random() % 4 == 0 ? "-" : "";
    text += std::to_string(random() % 100000000);
    text += '.';
    for (auto decimals = random() % 24; decimals > 0; --decimals)
      text += static_cast<char>('0' + random() % 10);
    double expected = std::strtod(text.c_str(), nullptr);
    double actual = to_double(text.c_str());
    ASSERT_EQ(0, std::memcmp(&expected, &actual, sizeof expected)) << text;
  }
}
