#include "support/token.h"

#include <gtest/gtest.h>
#include <string>

namespace {

// Each word in brackets, as next gives them.
std::string words(std::string_view line) {
  TOKEN token;
  token.init(line, " ");
  std::string joined;
  std::string_view word;
  for (int guard = 0; guard < 100 && token.next(&word); ++guard) {
    joined += "[" + std::string(word) + "]";
  }
  return joined;
}

}  // namespace

TEST(TokenTest, WordsAndStrings) {
  // A line is a view into the template: the walk never reads past its end.
  const std::string_view cut = "(ab) x(a\\)";
  const std::pair<std::string_view, const char*> cases[] = {
      {"0 To", "[0][To]"},
      {"a  b", "[a][][b]"},
      {"a ", "[a][]"},
      {"", "[]"},  // one empty word, then nothing
      {"(Hello World)Tx", "[(Hello World)][Tx]"},
      {"(a(b)c) Tx", "[(a(b)][c)][Tx]"},  // strings do not nest
      {"x(a b)", "[x(a][b)]"},            // only a word that begins with "(" is a string
      {"(abc", "[(abc]"},
      {"(a\\) b) Tx", "[(a\\) b)][Tx]"},  // an escaped ")" stays inside
      {"(a\\\\) b)", "[(a\\\\)][b)]"},    // a doubled backslash does not escape
      {"(a\\051) Tx", "[(a\\051)][Tx]"},
      {"(\\\\\\)) x", "[(\\\\\\))][x]"},  // an escape right after an escape
      {"(ab\\", "[(ab\\]"},               // the line ends inside an escape
      {cut.substr(0, 3), "[(ab]"},        // unclosed within the view
      {cut.substr(0, 5), "[(ab)][]"},
      {cut.substr(6, 3), "[(a\\]"},  // an escape cut by the view's end
  };
  for (const auto& [line, expected] : cases) EXPECT_EQ(expected, words(line)) << line;
  const std::string hex(5000, 'A');
  const std::string str = "(" + std::string(3000, 'b') + ")";
  EXPECT_EQ("[" + hex + "][x]", words(hex + " x"));  // long words come back whole
  EXPECT_EQ("[" + str + "][Tx]", words(str + " Tx"));
}
