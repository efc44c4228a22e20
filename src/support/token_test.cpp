#include "support/token.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

static std::string words(std::string_view line, const char* delim = " ") {
  TOKEN token;
  token.init(line, delim);
  std::string joined;
  int guard = 0;
  std::string_view word;
  while (token.next(&word)) {
    if (!joined.empty() || guard > 0) joined += "|";
    joined += word;
    if (++guard > 100) break;
  }
  return joined;
}

TEST(TokenTest, SplitsTheDocumentedLines) {
  EXPECT_EQ("0|To", words("0 To"));
  EXPECT_EQ("a||b", words("a  b"));
  EXPECT_EQ("a|", words("a "));
  EXPECT_EQ("", words(""));
  EXPECT_EQ("(Hello World)|Tx", words("(Hello World) Tx"));
  EXPECT_EQ("(abc)|Tx", words("(abc)Tx"));
  EXPECT_EQ("(a(b)|c)|Tx", words("(a(b)c) Tx"));
  EXPECT_EQ("(abc", words("(abc"));
  EXPECT_EQ("x(a|b)", words("x(a b)"));
}

TEST(TokenTest, EmptyLineGivesOneEmptyWordThenNothing) {
  TOKEN token;
  token.init("", " ");
  std::string_view word = "x";
  ASSERT_TRUE(token.next(&word));
  EXPECT_EQ("", word);
  EXPECT_FALSE(token.next(&word));
  EXPECT_FALSE(token.next(&word));
}

TEST(TokenTest, BackslashesInsideStrings) {
  EXPECT_EQ("(a\\) b)|Tx", words("(a\\) b) Tx"));  // escaped ) stays inside
  EXPECT_EQ("(a\\\\)|b)", words("(a\\\\) b)"));    // doubled backslash does not escape
  EXPECT_EQ("(a\\051)|Tx", words("(a\\051) Tx"));  // octal escape before )
  EXPECT_EQ("(ab\\", words("(ab\\"));              // line ends inside an escape
  EXPECT_EQ("(ab\\12", words("(ab\\12"));
  EXPECT_EQ("(\\\\\\))|x", words("(\\\\\\)) x"));  // escape right after an escape
}

TEST(TokenTest, LongWordsComeBackWhole) {
  std::string hex(5000, 'A');
  EXPECT_EQ(hex + "|x", words(hex + " x"));
  std::string str = "(" + std::string(3000, 'b') + ")";
  EXPECT_EQ(str + "|Tx", words(str + " Tx"));
}

TEST(TokenTest, MultiCharacterDelimiterSeparatesOnlyWhole) {
  EXPECT_EQ("a b|c", words("a b::c", "::"));
  EXPECT_EQ("a:b", words("a:b", "::"));
}

// A line is a view into the template: the walk never reads past its end.
TEST(TokenTest, StopsAtTheEndOfTheView) {
  const std::string text = "a b) c::d\r(more";
  EXPECT_EQ("a|b", words(std::string_view(text).substr(0, 3)));
  EXPECT_EQ("(ab", words(std::string_view("(ab) x").substr(0, 3)));  // unclosed within the view
  EXPECT_EQ("(a\\", words(std::string_view("(a\\)").substr(0, 3)));  // escape cut by the end
  EXPECT_EQ("(a)|", words(std::string_view("(a) x").substr(0, 4)));
  EXPECT_EQ("c:", words(std::string_view(text).substr(5, 2), "::"));
}
