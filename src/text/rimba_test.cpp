#include "text/rimba.h"

#include <gtest/gtest.h>

// The golden cases (font-rimba-encode, font-leading-zeros) show the codes of numbers of 1, 2,
// 4, 7 and 11 digits; these are the groupings and family names they do not.
TEST(RimbaTest, GroupingAndFamily) {
  const std::pair<const char*, const char*> grouped[] = {
      {"123456", "123,456"},
      {"123", "123"},
      {"12345", "12,345"},
      {"", ""},
      {"1234567890123456789", "1,234,567,890,123,456,789"},
  };
  for (const auto& [digits, text] : grouped) EXPECT_EQ(text, spricef(digits)) << digits;
  for (const char* name : {"Rimba", "RimbaNumerals-Bold"}) EXPECT_EQ(1, IsRimba(name)) << name;
  for (const char* name : {"rimba", "Rimb", ""}) EXPECT_EQ(0, IsRimba(name)) << name;
}
