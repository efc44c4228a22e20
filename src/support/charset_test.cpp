#include "support/charset.h"

#include <gtest/gtest.h>
#include <string>

#include "support/error.h"

namespace {

// The texts ("|" between them) converted in turn by one converter, each as "kept:" and its
// bytes, then " bad at N" with the offset of its first character without a code. (The
// golden cases convert into Mac Roman, Windows Latin 1 and Shift_JIS.)
std::string converted(const char* encoding, const std::string& texts) {
  CHARSET charset(encoding);
  std::string results;
  for (size_t from = 0, bar = 0; bar != std::string::npos; from = bar + 1) {
    bar = texts.find('|', from);
    std::string out = (from ? "|kept:" : "kept:");
    const size_t bad = charset.convert(texts.substr(from, bar - from), out);
    results += bad == std::string::npos ? out : out + " bad at " + std::to_string(bad);
  }
  return results;
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
      // A stateful encoding is back in its initial state at the end of every text, also of
      // one that stopped at a character without a code.
      {"ISO-2022-JP", "\xE3\x82\xBD|ab", "kept:\x1B$B%=\x1B(B|kept:ab"},
      {"ISO-2022-JP", "\xE3\x82\xBD\xC5\x82|\xE3\x82\xBD",
       "kept:\x1B$B%= bad at 3|kept:\x1B$B%=\x1B(B"},
      {"MACINTOSH", "a \xC5\x82 b", "kept:a  bad at 2"},
      {"MACINTOSH", "e\xCC\x81", "kept:e bad at 1"},  // no composing of decomposed accents
      {"WINDOWS-1252", "\xE2\x82\xAC\xE3\x82\xBD", "kept:\x80 bad at 3"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.expected, converted(c.encoding, c.utf8)) << c.encoding;
}

// The golden cases refuse an unknown name and a suffix; these are the names iconv itself
// would take otherwise.
TEST(CharsetTest, RefusesNamesIconvWouldNotTakeAsTheyStand) {
  EXPECT_EQ("unknown encoding \"\"\n", open_error(""));  // not the locale's encoding
  EXPECT_EQ("unknown encoding \"/MACINTOSH\"\n", open_error("/MACINTOSH"));
  EXPECT_EQ("encoding \"MACINTOSH//IGNORE\" has a suffix; give the name alone\n",
            open_error("MACINTOSH//IGNORE"));
  EXPECT_EQ("(no error)", open_error("macintosh"));
}
