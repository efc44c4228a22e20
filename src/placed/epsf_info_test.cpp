#include "placed/epsf_info.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <string>

#include "support/test_temp_dir.h"

namespace {

std::string box_text(const EPS_BBOX& box) {
  return std::to_string(box.llx) + " " + std::to_string(box.lly) + " " + std::to_string(box.urx) +
         " " + std::to_string(box.ury);
}

// The box read from a file holding bytes, or "fails" when analyze reports 1.
std::string read_box(const std::string& bytes) {
  TEST_TEMP_DIR dir;
  EPSF_INFO info(dir.write("art.eps", bytes));
  if (info.analyze() != 0) return "fails";
  return box_text(info.get_HiResBoundingBox());
}

}  // namespace

TEST(EpsfInfoTest, ReadsTheFirstHighResolutionBox) {
  EXPECT_EQ("0.000000 0.000000 595.276000 841.890000",
            read_box("%!PS-Adobe-3.0 EPSF-3.0\r%%BoundingBox: 0 0 595 842\r"
                     "%%HiResBoundingBox: 0 0 595.276 841.89\r%%EndComments\r"));
  EXPECT_EQ("1.000000 2.000000 3.000000 4.000000",
            read_box("%%HiResBoundingBox: 1 2 3 4\n%%HiResBoundingBox: 5 6 7 8\n"));
  EXPECT_EQ("1.000000 2.000000 3.000000 4.000000",
            read_box("%%HiResBoundingBox:  1  2   3 4 extra words\r"));
  EXPECT_EQ("1.000000 2.000000 3.000000 4.000000", read_box("%%XHiResBoundingBox: 1 2 3 4"));
  EXPECT_EQ("-1.500000 0.000000 0.000000 4.000000",
            read_box("HiResBoundingBox: -1.5 x 0\t9 4"));  // a tab does not separate words
}

TEST(EpsfInfoTest, KeyNeedsExactlyItsBlank) {
  EXPECT_EQ("fails", read_box("%%BoundingBox: 0 0 595 842\r"));
  EXPECT_EQ("5.000000 6.000000 7.000000 8.000000",
            read_box("%%HiResBoundingBox:\t1 2 3 4\r%%HiResBoundingBox:1 2 3 4\r"
                     "%%HiResBoundingBox: 5 6 7 8\r"));
  EXPECT_EQ("fails", read_box("%%hiresboundingbox: 1 2 3 4\r"));
}

TEST(EpsfInfoTest, FirstOccurrenceDecidesEvenWhenItIsUnusable) {
  EXPECT_EQ("fails", read_box("%%HiResBoundingBox: (atend)\r%%Trailer\r"
                              "%%HiResBoundingBox: 1 2 3 4\r"));
  EXPECT_EQ("fails", read_box("%%HiResBoundingBox: 1 2 3\r"));
  EXPECT_EQ("fails", read_box("%%HiResBoundingBox: \r1 2 3 4\r"));
  EXPECT_EQ("fails", read_box("%%HiResBoundingBox: "));
}

TEST(EpsfInfoTest, ValueLineEndsAtAnyLineEndOrTheFileEnd) {
  EXPECT_EQ("1.000000 2.000000 3.000000 4.000000", read_box("%%HiResBoundingBox: 1 2 3 4"));
  EXPECT_EQ("fails", read_box("%%HiResBoundingBox: 1 2\n3 4\r"));
  EXPECT_EQ("fails", read_box(std::string("%%HiResBoundingBox: 1 2\0 3 4\r", 29)));
}

TEST(EpsfInfoTest, NulBytesBeforeTheKeyAreOrdinary) {
  std::string bytes("\0\0%%HiRes", 9);
  bytes += std::string("\0", 1) + "HiResBoundingBox: 9 8 7 6\r";
  EXPECT_EQ("9.000000 8.000000 7.000000 6.000000", read_box(bytes));
}

// Files are read in large pieces; the key and its value line may cross their borders.
TEST(EpsfInfoTest, KeyAndValueAcrossReadBorders) {
  const std::string key = "%%HiResBoundingBox: ";
  for (size_t border : {size_t{65536}, size_t{131072}}) {
    for (size_t back = 0; back <= key.size() + 6; ++back) {
      std::string bytes(border - back, 'x');
      bytes += key + "10 20 30 40\r" + std::string(70000, 'y');
      EXPECT_EQ("10.000000 20.000000 30.000000 40.000000", read_box(bytes))
          << "key " << back << " bytes before " << border;
    }
  }
  std::string no_key(65536 - 10, 'x');
  no_key += "HiResBoundingBo";
  no_key += std::string(65536, 'x') + "HiResBoundingBox:";
  EXPECT_EQ("fails", read_box(no_key));
}

TEST(EpsfInfoTest, LongValueLineIsReadWhole) {
  std::string bytes = "%%HiResBoundingBox: " + std::string(200000, ' ') + "1 2 3 " +
                      std::string(70000, '0') + "4\r";
  EXPECT_EQ("1.000000 2.000000 3.000000 4.000000", read_box(bytes));
}

TEST(EpsfInfoTest, OnlyRegularFilesAreRead) {
  TEST_TEMP_DIR dir;
  EXPECT_EQ(1, EPSF_INFO(dir.path() + "/missing.eps").analyze());
  EXPECT_EQ(1, EPSF_INFO(dir.path()).analyze());
  EXPECT_EQ(1, EPSF_INFO("/dev/zero").analyze());
  const std::string fifo = dir.path() + "/fifo.eps";
  ASSERT_EQ(0, mkfifo(fifo.c_str(), 0600));
  EXPECT_EQ(1, EPSF_INFO(fifo).analyze());
}
