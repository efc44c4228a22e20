#include "support/charset.h"

#include <gtest/gtest.h>
#include <string>

#include "driver/diagnostics.h"

namespace {

// The text converted, or "bad at N" with the offset of the first character without a code.
// (The golden cases convert into Mac Roman, Windows Latin 1 and Shift_JIS.)
std::string converted(const char* encoding, const std::string& utf8) {
  CHARSET charset(encoding);
  std::string out = "kept:";
  const size_t bad = charset.convert(utf8, out);
  return bad == std::string::npos ? out : out + " bad at " + std::to_string(bad);
}

std::string open_error(const char* encoding) {
  try {
    CHARSET charset(encoding);
  } catch (const Error& error) {
    return error.what();
  }
  return "(no error)";
}

}  // namespace

TEST(CharsetTest, ConvertsIntoTheDocumentsEncoding) {
  const struct {
    const char* encoding;
    std::string utf8;
    std::string expected;
  } cases[] = {
      // The name as "iconv --list" prints it.
      {"CP1252//", "\xC3\xA9\xE2\x82\xAC", "kept:\xE9\x80"},
      // A stateful encoding is back in its initial state at the end of every text.
      {"ISO-2022-JP", "\xE3\x82\xBD", "kept:\x1B$B%=\x1B(B"},
      {"ISO-2022-JP", "ab", "kept:ab"},
      {"MACINTOSH", "a \xC5\x82 b", "kept:a  bad at 2"},
      {"MACINTOSH", "e\xCC\x81", "kept:e bad at 1"},  // no composing of decomposed accents
      {"WINDOWS-1252", "\xE2\x82\xAC\xE3\x82\xBD", "kept:\x80 bad at 3"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.expected, converted(c.encoding, c.utf8)) << c.encoding;
}

TEST(CharsetTest, RefusesNamesIconvWouldNotTakeAsTheyStand) {
  EXPECT_EQ("unknown encoding \"\"\n", open_error(""));  // not the locale's encoding
  EXPECT_EQ("unknown encoding \"/MACINTOSH\"\n", open_error("/MACINTOSH"));
  EXPECT_EQ("encoding \"MACINTOSH//IGNORE\" has a suffix; give the name alone\n",
            open_error("MACINTOSH//IGNORE"));
  EXPECT_EQ("(no error)", open_error("macintosh"));
}
