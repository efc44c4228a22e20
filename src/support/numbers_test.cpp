#include "support/numbers.h"

#include <gtest/gtest.h>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>

// Integers read as atoi reads them, except that values out of range clamp (the golden cases
// show the common forms).
TEST(NumbersTest, IntegersReadLikeAtoi) {
  const std::pair<const char*, int> cases[] = {
      {"12abc", 12},
      {"  \t-7", -7},
      {"+5", 5},
      {"2147483647", INT_MAX},
      {"-2147483648", INT_MIN},
      {"2147483648", INT_MAX},
      {"0000000000000000000000000007", 7},
  };
  for (const auto& [text, value] : cases) EXPECT_EQ(value, to_int(text)) << text;
  EXPECT_EQ(INT_MAX, to_int(std::string(5000, '9').c_str()));
  EXPECT_EQ(INT_MIN, to_int(("-" + std::string(40, '9')).c_str()));
}

// Reals take a shortcut when they are plain decimals; every form must still give exactly the
// C library's value, bit for bit.
TEST(NumbersTest, RealsMatchStrtodBitForBit) {
  auto same = [](const std::string& text) {
    const double expected = std::strtod(text.c_str(), nullptr);
    const double actual = to_double(text.c_str());
    return std::memcmp(&expected, &actual, sizeof expected) == 0;
  };
  for (const char* text : {"-0",
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
                           "-2]",
                           "841.89\t",
                           "(",
                           "",
                           "9007199254740993",
                           "9007199254740992.5",
                           "0.1",
                           "123456789012345678901",
                           "1.00000000000000000000001"}) {
    EXPECT_TRUE(same(text)) << text;
  }
  std::mt19937 random(7);
  for (int i = 0; i < 200000; ++i) {
    std::string text = random() % 4 == 0 ? "-" : "";
    text += std::to_string(random() % 100000000);
    text += '.';
    for (auto decimals = random() % 24; decimals > 0; --decimals)
      text += static_cast<char>('0' + random() % 10);
    ASSERT_TRUE(same(text)) << text;
  }
}
