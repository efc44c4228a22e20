#include "support/escapes.h"

#include <gtest/gtest.h>

TEST(EscapesTest, EncodeKeepsPrintableAsciiButBackslash) {
  EXPECT_EQ("a(b)\\134c", tx_encode("a(b)\\c"));
  EXPECT_EQ("\\r\\r", tx_encode("\r\n"));
  EXPECT_EQ("\\t", tx_encode("\t"));
  EXPECT_EQ("\\244\\242", tx_encode("\xA4\xA2"));
  EXPECT_EQ("\\001\\177 ~[]", tx_encode(std::string("\x01\x7F ~[]")));
  EXPECT_EQ("", tx_encode(""));
  EXPECT_EQ("\\000", tx_encode(std::string(1, '\0')));
}

TEST(EscapesTest, DecodeOctalAndDoubledBackslashes) {
  EXPECT_EQ("ABC", path_decode("\\101BC"));
  EXPECT_EQ("a\\b", path_decode("a\\\\b"));
  EXPECT_EQ("Disk:Caf\xE9.eps", path_decode("Disk:Caf\\351.eps"));
  EXPECT_EQ("\x01", path_decode("\\401"));  // modulo 256
  // "\r" has no meaning of its own: the three bytes after the backslash are used as digits.
  EXPECT_EQ(std::string(1, static_cast<char>((('r' - '0') * 8 + ('a' - '0')) * 8 + ('b' - '0'))),
            path_decode("\\rab"));
}

TEST(EscapesTest, DecodeNeverReadsPastTheEnd) {
  EXPECT_EQ("ab\\", path_decode("ab\\"));
  EXPECT_EQ("ab\\1", path_decode("ab\\1"));
  EXPECT_EQ("ab\\12", path_decode("ab\\12"));
  EXPECT_EQ("ab\n", path_decode("ab\\012"));
}
