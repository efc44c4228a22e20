#include "template/line_blocks.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

#if defined(__SSE2__)
// Every way of scanning a block finds what the byte-by-byte definition does: CRs, CR LFs, and in
// blocks that are not plain, '%' and NUL.
TEST(LineBlocksTest, ScansMatchTheDefinition) {
  std::mt19937 random(11);
  const std::string alphabet = std::string("\r\n%ATtoOx ", 11) + '\0';
  for (int round = 0; round < 5000; ++round) {
    std::string block(65, 'x');
    for (char& c : block) c = alphabet[random() % alphabet.size()];
    LINE_BLOCK expected;
    bool plain = true;
    for (size_t i = 0; i < 64; ++i) {
      const char c = block[i];
      const char next = block[i + 1];
      if (c == '\r') {
        expected.crs |= uint64_t{1} << i;
        ++expected.cr_count;
        expected.crlf = expected.crlf || next == '\n';
      }
      if (c == '%' || c == '\0') expected.others |= uint64_t{1} << i;
      if (c == '\0' || (c == '%' && (next == '%' || next == 'A')) ||
          (c == 'T' && (next == 'o' || next == 'O'))) {
        plain = false;
      }
    }
    if (plain) expected.others = 0;
    expected.plain = plain;
    std::vector<LINE_BLOCK> scans(1);
    scan_blocks16(block.data(), 1, &scans[0]);
    if (can_scan_blocks32()) {
      scans.emplace_back();
      scan_blocks32(block.data(), 1, &scans.back());
    }
    if (can_scan_blocks64()) {
      scans.emplace_back();
      scan_blocks64(block.data(), 1, &scans.back());
    }
    for (const LINE_BLOCK& scan : scans) {
      ASSERT_EQ(expected.crs, scan.crs) << round;
      ASSERT_EQ(expected.cr_count, scan.cr_count) << round;
      ASSERT_EQ(expected.crlf, scan.crlf) << round;
      ASSERT_EQ(expected.plain, scan.plain) << round;
      ASSERT_EQ(expected.others, scan.others) << round;
    }
  }
}
#endif
