#include "textattr/text_style.h"

#include <gtest/gtest.h>
#include <string>

#include "support/printed.h"

TEST(TextStyleTest, FontNameDropsTheFirstTwoCharacters) {
  OP_Tf tf;
  tf.setup("/_Times-Roman", 12, 10, 2);
  EXPECT_EQ("Times-Roman", tf.fontname);
  EXPECT_EQ("/_Times-Roman 12.000000 10.000000 2.000000 Tf\r", printed(tf));

  tf.setup("/Courier", 9.5, 0, -1);
  EXPECT_EQ("/_ourier 9.500000 0.000000 -1.000000 Tf\r", printed(tf));

  tf.setup("/_", 1, 2, 3);
  EXPECT_EQ("", tf.fontname);
  tf.setup("/", 1, 2, 3);
  EXPECT_EQ("/_ 1.000000 2.000000 3.000000 Tf\r", printed(tf));
}

TEST(TextStyleTest, LongFontNamesAreKeptWhole) {
  std::string name(300, 'F');
  OP_Tf tf;
  tf.setup(("/_" + name).c_str(), 0, 0, 0);
  EXPECT_EQ(name, tf.fontname);
}

TEST(TextStyleTest, ValuesWhenMade) {
  EXPECT_EQ("/_ 0.000000 0.000000 0.000000 Tf\r", printed(OP_Tf()));
  EXPECT_EQ("100.000000 100.000000 Tz\r", printed(OP_Tz()));
  EXPECT_EQ("14.500000 0.000000 Tl\r", printed(OP_Tl()));
  EXPECT_EQ("1 0 Tk\r", printed(OP_Tk()));
  EXPECT_EQ("1 0 TK\r", printed(OP_TK()));
  EXPECT_EQ("%_0 0 0 0 Xu\r", printed(OP_Xu()));
  EXPECT_EQ("0 Tr\r", printed(OP_Tr()));
}

TEST(TextStyleTest, XuAndTlFormats) {
  OP_Xu xu;
  xu.setup(0, 50, 100, 0);
  EXPECT_EQ("%_0 50 100 0 Xu\r", printed(xu));
  OP_Tl tl;
  tl.setup(14, 0);
  EXPECT_EQ("14.000000 0.000000 Tl\r", printed(tl));
}
