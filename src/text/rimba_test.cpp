#include "text/rimba.h"

#include <gtest/gtest.h>

#include "support/escapes.h"

TEST(RimbaTest, GroupsInThousands) {
  EXPECT_EQ("1,234,567", spricef("1234567"));
  EXPECT_EQ("123,456", spricef("123456"));
  EXPECT_EQ("1,234", spricef("1234"));
  EXPECT_EQ("12,345", spricef("12345"));
  EXPECT_EQ("123", spricef("123"));
  EXPECT_EQ("7", spricef("7"));
  EXPECT_EQ("", spricef(""));
  EXPECT_EQ("1,234,567,890,123,456,789", spricef("1234567890123456789"));
}

TEST(RimbaTest, EncodesEachCharacterByItsFollower) {
  EXPECT_EQ("\x72|", rimba_encode("7"));
  EXPECT_EQ("\x75|", rimba_encode("0"));
  EXPECT_EQ("\x68\x2D|", rimba_encode("12"));
  EXPECT_EQ("\xDD\xAB\x6E\x26\x71|", rimba_encode("1234"));
  EXPECT_EQ("\xDD\xAB\x6E\x26\xE0\xE7\x4A\x3C\x72|", rimba_encode("1234567"));
}

TEST(RimbaTest, EscapedFormsForTheTemplate) {
  EXPECT_EQ("\\335\\253n&q|", tx_encode(rimba_encode("1234")));
  EXPECT_EQ("r|", tx_encode(rimba_encode("7")));
}

TEST(RimbaTest, RecognisesTheFamilyByPrefix) {
  EXPECT_EQ(1, IsRimba("Rimba"));
  EXPECT_EQ(1, IsRimba("RimbaNumerals-Bold"));
  EXPECT_EQ(0, IsRimba("rimba"));
  EXPECT_EQ(0, IsRimba("Rimb"));
  EXPECT_EQ(0, IsRimba(""));
}
