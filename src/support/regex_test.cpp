#include "support/regex.h"

#include <gtest/gtest.h>
#include <string>

namespace {

// Every match that a walk from the start finds, joined with "|", then the count.
std::string walk(const char* pattern, const std::string& subject) {
  MY_REGEX regex;
  if (!regex.compile(pattern)) return "(invalid)";
  regex.init_offset(subject.c_str());
  std::string joined;
  std::string match;
  for (int guard = 0; regex.match_next(match) && guard < 100; ++guard) joined += match + "|";
  return joined + std::to_string(regex.match_count());
}

}  // namespace

TEST(RegexTest, WalksMatchesLeftToRight) {
  EXPECT_EQ("12|345|2", walk("[0-9]+", "ab-12-cd-345-x"));
  EXPECT_EQ("||||4", walk("x*", "abc"));  // empty matches never loop
  EXPECT_EQ("TX-1-2|1", walk("[A-Z]+-[0-9]+-[0-9]+", std::string(50000, 'x') + "TX-1-2"));
  // The walk's end leaves the last match alone.
  MY_REGEX regex;
  ASSERT_EQ(1, regex.compile("TX-[0-9]+-[0-9]+"));
  const std::string subject = "a TX-1-2 b";
  regex.init_offset(subject.c_str());
  std::string match;
  EXPECT_EQ(1, regex.match_next(match));
  EXPECT_EQ(0, regex.match_next(match));
  EXPECT_EQ("TX-1-2", match);
  EXPECT_EQ(1, regex.match_yes());
}

TEST(RegexTest, InvalidPatternReportsTheLibraryText) {
  MY_REGEX regex;
  EXPECT_EQ(0, regex.compile("("));
  EXPECT_EQ(0, regex.error_text().find("regcomp() error:"));
  EXPECT_GT(regex.error_text().size(), std::string("regcomp() error:\n").size());
  EXPECT_EQ('\n', regex.error_text().back());
  regex.init_offset("(");
  EXPECT_EQ(0, regex.match_yes());
}
