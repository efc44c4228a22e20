#include "support/strings.h"

#include <gtest/gtest.h>
#include <string>

#include "support/error.h"

namespace {

// The pieces that split gives for text until it says there are no more, and once more.
std::string pieces(const char* text) {
  MY_STRING cutter;
  cutter.split("\t", text);
  std::string out;
  int more = 1;
  for (int guard = 0; more && guard < 10; ++guard) {
    out += "[" + std::string(cutter.split(&more)) + "]";
  }
  return out + "[" + std::string(cutter.split(&more)) + "]" + std::to_string(more);
}

}  // namespace

// The golden cases show replacing and splitting in the common places; these are the edges.
TEST(StringsTest, ReplaceAndSplit) {
  EXPECT_EQ("ba", MY_STRING::replace("aaa", "aa", "b"));  // left to right, no overlaps
  EXPECT_EQ("x 12 y 12", MY_STRING::replace("x TX-1-1 y TX-1-1", "TX-1-1", "12"));
  EXPECT_EQ("same", MY_STRING::replace("same", "zz", "y"));
  try {
    MY_STRING::replace("abc", "", "x");
    ADD_FAILURE() << "no error";
  } catch (const Error& error) {
    EXPECT_STREQ("MY_STRING:replace( char*, char*, char* ):empty search text\n", error.what());
  }
  EXPECT_EQ("[a][b][b]0", pieces("a\tb"));  // past the end, the last piece again
  EXPECT_EQ("[a][][]0", pieces("a\t"));
  EXPECT_EQ("[][]0", pieces(""));
}
