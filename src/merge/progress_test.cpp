#include "merge/progress.h"

#include <gtest/gtest.h>

TEST(ProgressTest, LineShowsDoneRateAndTimeLeft) {
  EXPECT_EQ("ormel: 0/1000 documents", PROGRESS::line(0, 1000, 0.0));
  EXPECT_EQ("ormel: 250/1000 documents, 500/s, 2 s left", PROGRESS::line(250, 1000, 0.5));
  EXPECT_EQ("ormel: 10/10000 documents, 2/s, 1:23:15 left", PROGRESS::line(10, 10000, 5.0));
  EXPECT_EQ("ormel: 100/1000 documents, 10/s, 1:30 left", PROGRESS::line(100, 1000, 10.0));
  EXPECT_EQ("ormel: 7/7 documents, 14/s, 0 s left", PROGRESS::line(7, 7, 0.5));
}
