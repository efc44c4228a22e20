#include "support/output.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "support/file_io.h"
#include "support/test_temp_dir.h"

namespace {

std::string c_library(double value) {
  char text[512];
  std::snprintf(text, sizeof text, "%f", value);
  return text;
}

std::string ours(double value) {
  Output out;
  out.printf("%f", value);
  return std::string(out.text());
}

}  // namespace

TEST(OutputTest, RealsMatchTheCLibrary) {
  const double inf = std::numeric_limits<double>::infinity();
  const double values[] = {
      0.0,         -0.0,      1.0,       -1.0,   0.5,    14.4,        10.5,           -2.0,
      0.1234567,   0.0000005, 0.0000015, -1e-10, 1e-7,   595.276,     123456.7890125, 841.89,
      1e11,        1e12,      1e15,      1e300,  -1e300, 2.5e-7,      999999.9999995, 0.3,
      999999999.0, -1e9,      1e9 + 0.5, inf,    -inf,   std::nan("")};
  for (double value : values) EXPECT_EQ(c_library(value), ours(value)) << value;
  std::mt19937_64 random(7);
  std::uniform_real_distribution<double> wide(-1e7, 1e7);
  for (int i = 0; i < 200000; ++i) {
    double value = wide(random);
    if (i % 3 == 0) value = std::round(value * 1000) / 1000;  // few decimals, as templates hold
    if (i % 3 == 1) value = std::round(value) / 8;
    ASSERT_EQ(c_library(value), ours(value)) << value;
  }
}

TEST(OutputTest, FormatsTheConversionsItUses) {
  Output out;
  out.printf("%d %s%s|%%_%d|%5.1f", -42, "Tr", "\r", 7, 2.25);
  EXPECT_EQ("-42 Tr\r|%_7|  2.2", out.text());
  out.line("next");
  EXPECT_EQ("-42 Tr\r|%_7|  2.2next\r", out.text());
  // Texts longer than the formatting array, before and after a conversion the C library does.
  const std::string long_text(1000, 'a');
  Output long_out;
  long_out.printf("%s|%f|%s", long_text.c_str(), -1.5, long_text.c_str());
  long_out.printf("%s|%5.1f", long_text.c_str(), 2.25);
  EXPECT_EQ(long_text + "|-1.500000|" + long_text + long_text + "|  2.2", long_out.text());
}

// Kept bytes go out by reference, copied ones from the buffer: in the order they were given,
// also past the most pieces one flush takes and past the buffer's size.
TEST(OutputTest, KeptAndCopiedBytesKeepTheirOrder) {
  TEST_TEMP_DIR dir;
  const std::string path = dir.path() + "/out";
  FILE* file = std::fopen(path.c_str(), "wb");
  ASSERT_NE(nullptr, file);
  std::string big(200000, 'k');
  for (size_t i = 0; i < big.size(); i += 7) big[i] = static_cast<char>('a' + i % 26);
  std::vector<std::string> kept;
  for (int i = 0; i < 2000; ++i) kept.push_back("kept" + std::to_string(i));
  Output out(fileno(file));
  Output memory;
  for (Output* o : {&out, &memory}) {
    for (int i = 0; i < 2000; ++i) {
      o->write_kept(kept[static_cast<size_t>(i)]);
      if (i % 3 == 0) o->line("copied");
      if (i % 10 == 0) o->printf("%d", i);
      if (i == 1000) o->write_kept(big);
      if (i == 1500) o->write(big);
      // Slices that follow one another in memory go out as one piece.
      if (i == 1700) {
        for (size_t at = 0; at < big.size(); at += 70000) {
          o->write_kept(std::string_view(big).substr(at, 70000));
        }
      }
    }
    o->write_kept("");
    o->flush();
  }
  std::fclose(file);
  const std::string written = read_whole_file(path.c_str(), "open failed\n", "read failed\n");
  EXPECT_EQ(memory.text(), written);
}

// A large write into a pipe first asks for a pipe of a megabyte, which then takes it whole.
TEST(OutputTest, WidensAPipeForALargeWrite) {
  int ends[2];
  ASSERT_EQ(0, pipe(ends));
  const std::string bytes(300000, 'p');
  {
    Output out(ends[1]);
    out.write_kept(bytes);
    out.flush();
  }
#if defined(F_SETPIPE_SZ)
  EXPECT_EQ(1 << 20, fcntl(ends[1], F_GETPIPE_SZ));
#endif
  close(ends[1]);
  std::string read_back;
  char chunk[65536];
  for (ssize_t got; (got = read(ends[0], chunk, sizeof chunk)) > 0;) {
    read_back.append(chunk, static_cast<size_t>(got));
  }
  close(ends[0]);
  EXPECT_EQ(bytes, read_back);
}
