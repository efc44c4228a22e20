#include "support/escapes.h"

#include <gtest/gtest.h>

// Cells into the template's strings, and placed-art names out of them.
TEST(EscapesTest, TemplateTextsAndNames) {
  const std::pair<std::string, std::string> encoded[] = {
      {"a(b)\\c", "a(b)\\134c"},       {"\r\n", "\\r\\r"},
      {"\xA4\xA2", "\\244\\242"},      {"\x01\x7F ~[]", "\\001\\177 ~[]"},
      {std::string(1, '\0'), "\\000"},
  };
  for (const auto& [raw, text] : encoded) EXPECT_EQ(text, tx_encode(raw)) << text;
  const std::pair<const char*, std::string> decoded[] = {
      {"\\401", "\x01"},  // modulo 256
      // "\r" has no meaning of its own: the three bytes after the backslash count as digits.
      {"\\rab",
       std::string(1, static_cast<char>((('r' - '0') * 8 + ('a' - '0')) * 8 + ('b' - '0')))},
      {"ab\\", "ab\\"},  // never past the end
      {"ab\\1", "ab\\1"},
      {"ab\\12", "ab\\12"},
      {"ab\\012", "ab\n"},
  };
  for (const auto& [name, raw] : decoded) EXPECT_EQ(raw, path_decode(name)) << name;
}

TEST(EscapesTest, StringDecodeReadsEveryEscape) {
  const struct {
    const char* body;
    std::string raw;
  } cases[] = {
      {"\\124\\130\\055\\061", "TX-1"},               // octal, as newer writers spell every byte
      {"\\(a\\)\\\\", "(a)\\"},                       // parentheses and backslash
      {"\\r\\n\\t\\b\\f", "\r\n\t\b\f"},              // the letter escapes
      {"\\0\\12x\\1234", std::string("\0\nxS4", 5)},  // one to three digits, no more
      {"\\777", "\xFF"},                              // modulo 256
      {"a\\\rb\\\r\nc\\\nd", "abcd"},                 // a backslash before a line end continues
      {"\\q\\%", "q%"},                               // before any other byte it is dropped
      {"end\\", "end"},                               // a lone backslash at the end
  };
  for (const auto& c : cases) EXPECT_EQ(c.raw, ps_string_decode(c.body)) << c.body;
}

TEST(EscapesTest, StringEscapeReadsBackAsTheSameBytes) {
  EXPECT_EQ("T-Shirt \\(XL C:\\\\new\\r\\001\xE9",
            ps_string_escape("T-Shirt (XL C:\\new\r\x01\xE9", false));
  EXPECT_EQ("Caf\\351\\177", ps_string_escape("Caf\xE9\x7F", true));
  EXPECT_EQ("\\0011", ps_string_escape("\x01"
                                       "1",
                                       false));  // three digits: a digit after stays
  EXPECT_EQ("a\\011\\010\\014\\r\\n", ps_string_escape("a\t\b\f\r\n", false, true));
  std::string every_byte;
  for (int b = 0; b < 256; ++b) every_byte += static_cast<char>(b);
  for (bool octal_high : {false, true}) {
    for (bool octal_controls : {false, true}) {
      EXPECT_EQ(every_byte,
                ps_string_decode(ps_string_escape(every_byte, octal_high, octal_controls)));
    }
  }
}

// A rewritten string follows the template's way: all octal, 8-bit bytes in octal, or as is.
TEST(EscapesTest, StringStyleOfATemplate) {
  const std::pair<const char*, STRING_STYLE> cases[] = {
      {"\\110\\165\\041", STRING_STYLE::octal_all}, {"Caf\\351 \\(1\\)", STRING_STYLE::octal_high},
      {"Caf\xE9 \\351", STRING_STYLE::as_is},  // a raw 8-bit byte wins
      {"TX-1-1\\r", STRING_STYLE::as_is},           {"", STRING_STYLE::as_is},
  };
  for (const auto& [body, style] : cases) EXPECT_EQ(style, string_style(body)) << body;
  EXPECT_EQ("\\050\\134\\351", ps_string_in_style("(\\\xE9", STRING_STYLE::octal_all));
  EXPECT_EQ("\\(\\\\\\351", ps_string_in_style("(\\\xE9", STRING_STYLE::octal_high));
  EXPECT_EQ("\\(\\\\\xE9", ps_string_in_style("(\\\xE9", STRING_STYLE::as_is));
}

TEST(EscapesTest, HexStringsAndRunTexts) {
  EXPECT_EQ("OK\xF0", ps_hex_decode("4F 4b\nF"));
  EXPECT_EQ("4f4bff", ps_hex_encode("OK\xFF", true));
  // A run text holds no tab, NUL or lone backslash, and gives its bytes back.
  const std::string raw("a\tb\\c\0d", 7);
  EXPECT_EQ("a\\tb\\\\c\\zd", run_text(raw));
  EXPECT_EQ(raw, run_bytes(run_text(raw)));
}
