#include "placed/epsf_info.h"

#include <gtest/gtest.h>
#include <string>

#include "support/test_temp_dir.h"

namespace {

// The box read from a file holding bytes, or "fails" when analyze reports 1.
std::string read_box(const std::string& bytes) {
  TEST_TEMP_DIR dir;
  EPSF_INFO info(dir.write("art.eps", bytes));
  if (info.analyze() != 0) return "fails";
  const EPS_BBOX box = info.get_HiResBoundingBox();
  return std::to_string(box.llx) + " " + std::to_string(box.lly) + " " + std::to_string(box.urx) +
         " " + std::to_string(box.ury);
}

}  // namespace

// placed-eps-hires shows the common forms (no key, (atend), three numbers, a tab after the
// key, no line end); these are the others.
TEST(EpsfInfoTest, FirstKeyWithItsBlankDecides) {
  const std::pair<std::string, const char*> cases[] = {
      {"%%HiResBoundingBox: 1 2 3 4\n%%HiResBoundingBox: 5 6 7 8\n",
       "1.000000 2.000000 3.000000 4.000000"},
      {"%%XHiResBoundingBox: 1 2 3 4", "1.000000 2.000000 3.000000 4.000000"},
      {"HiResBoundingBox: -1.5 x 0\t9 4", "-1.500000 0.000000 0.000000 4.000000"},
      {"%%HiResBoundingBox:1 2 3 4\r%%HiResBoundingBox: 5 6 7 8\r",
       "5.000000 6.000000 7.000000 8.000000"},
      {"%%hiresboundingbox: 1 2 3 4\r", "fails"},
      {"%%HiResBoundingBox: ", "fails"},
      {"%%HiResBoundingBox: (atend)\r%%HiResBoundingBox: 1 2 3 4\r", "fails"},
      {"%%HiResBoundingBox: 1 2\n3 4\r", "fails"},
      {std::string("%%HiResBoundingBox: 1 2\0 3 4\r", 29), "fails"},
      {std::string("\0\0%%HiRes\0HiResBoundingBox: 9 8 7 6\r", 36),
       "9.000000 8.000000 7.000000 6.000000"},
      {"%%HiResBoundingBox: " + std::string(200000, ' ') + "1 2 3 " + std::string(70000, '0') +
           "4\r",
       "1.000000 2.000000 3.000000 4.000000"},
  };
  for (const auto& [bytes, box] : cases) EXPECT_EQ(box, read_box(bytes)) << bytes.substr(0, 40);
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
