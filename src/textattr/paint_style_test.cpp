#include "textattr/paint_style.h"

#include <gtest/gtest.h>
#include <string>

#include "support/printed.h"

TEST(PaintStyleTest, ValuesWhenMade) {
  EXPECT_EQ("0.000000 0.000000 0.000000 1.000000 k\r", printed(OP_k()));
  EXPECT_EQ("1.000000 g\r", printed(OP_g()));
  EXPECT_EQ("0.000000 0.000000 0.000000 1.000000 K\r", printed(OP_K()));
  EXPECT_EQ("1.000000 G\r", printed(OP_G()));
}

TEST(PaintStyleTest, MoreThanSixDecimalsAreRounded) {
  OP_g g;
  g.setup(0.1234567);
  EXPECT_EQ("0.123457 g\r", printed(g));
  g.setup(0.9999996);
  EXPECT_EQ("1.000000 g\r", printed(g));
}
