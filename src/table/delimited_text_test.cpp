#include "table/delimited_text.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <string>

#include "support/charset.h"
#include "support/error.h"
#include "table/tab_text.h"
#include "table/unicode_text.h"

namespace {

// The table's rows in one line, "[cell|cell][cell]", or the message of the failure.
std::string read(const std::string& bytes, char32_t separator = ',',
                 const char* encoding = "MACINTOSH") {
  CHARSET charset(encoding);
  TAB_TEXT table;
  try {
    DELIMITED_TEXT(bytes, separator, charset, "t.csv").read(table);
  } catch (const Error& error) {
    return error.what();
  }
  std::string dump;
  for (long long row = 0; row < table.rec_count(); ++row) {
    dump += "[";
    for (long long col = 0; const char* cell = table.get_field(row, col); ++col) {
      dump += (col ? "|" : "") + std::string(cell);
    }
    dump += "]";
  }
  return dump;
}

}  // namespace

TEST(DelimitedTextTest, RowsCellsAndQuotes) {
  const struct {
    std::string bytes;
    std::string rows;
  } cases[] = {
      {"", ""},
      {"\xEF\xBB\xBF", ""},
      {"\n", "[]"},
      {"a,b\n", "[a|b]"},  // a final line end starts no row
      {"a,b", "[a|b]"},
      {"a,,b\r\n\r\nc\rd", "[a||b][][c][d]"},  // LF, CR LF and CR; an empty line in the middle
      {"\xEF\xBB\xBFid,name\r\n", "[id|name]"},
      {"\"x,y\",\"say \"\"hi\"\"\",\"\"\n", "[x,y|say \"hi\"|]"},
      {"\"two\r\nlines\",\"a\nb\rc\"", "[two\\rlines|a\\rb\\rc]"},  // each line break is \r
      {"5\" disk,a\"b", "[5\" disk|a\"b]"},  // a quote inside a cell is a character
      {" \"x\"", "[ \"x\"]"},                // only a quote that begins the cell quotes it
      {"a\tb,c", "[a\\011b|c]"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.rows, read(c.bytes)) << c.bytes;
  EXPECT_EQ("[a,b|\"c\\011d\"]", read("a,b\t\"\"\"c\td\"\"\"", '\t'));
  EXPECT_EQ("[a|b]", read(std::string("\xFE\xFF\0a\0,\0b", 8)));
}

// The golden cases hold one failure of each kind; these are the places they do not show.
TEST(DelimitedTextTest, FailuresNameTheCellTheyBeginIn) {
  const struct {
    std::string bytes;
    std::string message;
  } cases[] = {
      {"a,\xF0\x9F\x98\x80",
       "row 1, column 2: \"\xF0\x9F\x98\x80\" (U+1F600) has no code in "
       "MACINTOSH"},
      {"\"a\nb\",\"c\n\nd", "row 1, column 2: quoted cell without its closing quote"},
      {"\"a\"\xE9",  // not "text after"
       "row 1, column 1: malformed UTF-8 (byte 0xE9)\nt.csv: if it was saved in another "
       "encoding, name it with -table-encoding= (such as WINDOWS-1252 or MACINTOSH)"},
      // A surrogate pair in either byte order is one character.
      {std::string("\xFF\xFE\x3D\xD8\x00\xDE", 6),
       "row 1, column 1: \"\xF0\x9F\x98\x80\" (U+1F600) has no code in MACINTOSH"},
      {std::string("\xFE\xFF\xD8\x3D\xDE\x00", 6),
       "row 1, column 1: \"\xF0\x9F\x98\x80\" (U+1F600) has no code in MACINTOSH"},
  };
  for (const auto& c : cases) EXPECT_EQ("t.csv: " + c.message + "\n", read(c.bytes)) << c.bytes;
}

// Every problem of a table is told at once: the first 20, then how many more.
TEST(DelimitedTextTest, AllProblemsAtOnce) {
  std::string bytes;
  for (int row = 0; row < 22; ++row) bytes += "x,\"a\"b\n";
  const std::string message = read(bytes);
  EXPECT_EQ(21u, static_cast<size_t>(std::count(message.begin(), message.end(), '\n')));
  EXPECT_NE(std::string::npos,
            message.find("t.csv: row 20, column 2: text after the closing quote\n"
                         "and 2 more\n"));
}

// Each malformed form stops at its first byte; each length is taken at its boundaries.
TEST(UnicodeTextTest, StrictUtf8) {
  for (const char* malformed :
       {"\x80", "\xC0\x80", "\xC1\xBF", "\xE0\x80\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80",
        "\xF5\x80\x80\x80", "\xC3", "\xE2\x82", "\xC3\x28"}) {
    EXPECT_EQ(UNICODE_TEXT::kMalformed, UNICODE_TEXT(malformed).get()) << malformed;
  }
  for (char32_t c :
       {0x7Fu, 0x80u, 0x7FFu, 0x800u, 0xD7FFu, 0xE000u, 0xFFFFu, 0x10000u, 0x10FFFFu}) {
    std::string bytes;
    append_utf8(c, bytes);
    UNICODE_TEXT text(bytes);
    EXPECT_EQ(c, text.get());
    EXPECT_EQ(UNICODE_TEXT::kEnd, text.get());
  }
}
