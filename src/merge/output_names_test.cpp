#include "merge/output_names.h"

#include <gtest/gtest.h>

#include "support/error.h"
#include "support/settings.h"

namespace {

// Cells of a block: table 0 ("PR") and table 1 ("LOGO"), cell (r, c) reads "tR-rC-c";
// row 9 has none, row 8 an empty one.
std::optional<std::string> cell(size_t table, long long row, long long col) {
  if (row == 9) return std::nullopt;
  if (row == 8) return std::string();
  return "t" + std::to_string(table) + "-r" + std::to_string(row) + "c" + std::to_string(col);
}

std::string name_or_error(const std::string& pattern, long long number, bool generic = false) {
  NAME_PATTERN names;
  std::string problem;
  if (!names.parse(pattern, {"PR", "LOGO", "PR"}, generic, &problem)) return "usage: " + problem;
  try {
    return names.name(number, cell);
  } catch (const Error& error) {
    return error.what();
  }
}

}  // namespace

TEST(OutputNamesTest, PatternsGiveNamesOrTheirProblem) {
  const struct {
    const char* pattern;
    long long number;
    const char* expected;
  } cases[] = {
      {"label-####.ai", 7, "label-0007.ai"},
      {"#-##", 123, "123-123"},  // a number wider than its run is written whole
      {"{PR-1-2}/{LOGO-3-1}.eps", 1, "t0-r1c2/t1-r3c1.eps"},
      {"a{b", 1, "usage: \"{b\" names no cell (ID-row-column)"},
      {"{PR-0-1}", 1, "usage: \"{PR-0-1}\" names no cell (ID-row-column)"},
      {"{PR-1}", 1, "usage: \"{PR-1}\" names no cell (ID-row-column)"},
      {"{PR-1-x}", 1, "usage: \"{PR-1-x}\" names no cell (ID-row-column)"},
      {"{TX-1-1}", 1, "usage: no table argument has the identifier TX"},
      {"}{A-B-1-1}", 1, "usage: no table argument has the identifier A-B"},
      {"x{PR-9-1}", 4, "document 4: no file name: the cell {PR-9-1} is empty\n"},
      {"x{PR-8-1}", 5, "document 5: no file name: the cell {PR-8-1} is empty\n"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.expected, name_or_error(c.pattern, c.number)) << c.pattern;
  }
  // The one table of a generic run answers every identifier.
  EXPECT_EQ("t0-r1c1", name_or_error("{TX-1-1}", 1, true));
}

TEST(OutputNamesTest, PartsOfNamesFitTheFileSystem) {
  const std::string longest(251, 'n');
  EXPECT_EQ(longest + ".eps", name_or_error(longest + ".eps", 1));
  EXPECT_EQ("document 1: file name too long: " + longest + "x.eps\n",
            name_or_error(longest + "x.eps", 1));
  EXPECT_EQ("d/" + longest + ".eps", name_or_error("d/" + longest + ".eps", 1));
}

TEST(OutputNamesTest, CellsAreMadeSafe) {
  EXPECT_EQ("a_b_c_d_e\xC3\xA9", safe_name_part("a/b\rc\x01"
                                                "d\x7F"
                                                "e\xC3\xA9",
                                                false));
  EXPECT_EQ("_hidden", safe_name_part(".hidden", true));
  EXPECT_EQ("v1.2", safe_name_part("v1.2", true));
  EXPECT_EQ(".5", safe_name_part(".5", false));  // inside a part a dot hides nothing
  EXPECT_EQ("_.", safe_name_part("..", true));
  EXPECT_EQ("a_b_c_d_e_f_g_h_", safe_name_part("a<b>c:d\"e\\f|g?h*", false));
}

// What Windows and Mac shares cannot hold is changed in the whole name, parts from cells and
// from the pattern alike.
TEST(OutputNamesTest, NamesFitWindowsAndMacShares) {
  const struct {
    const char* pattern;
    const char* name;
  } cases[] = {
      {"CON.ai", "_CON.ai"},    {"out/nul", "out/_nul"},      {"com7.tar.gz", "_com7.tar.gz"},
      {"COM10.ai", "COM10.ai"}, {"console.ai", "console.ai"}, {"lpt0.ai", "lpt0.ai"},
      {"label. ", "label._"},   {"dir./x.ai", "dir_/x.ai"},   {"../#.ai", "../1.ai"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.name, name_or_error(c.pattern, 1)) << c.pattern;
  EXPECT_EQ(case_folded("salak-\xC3\xA9.ai"), case_folded("SALAK-\xC3\x89.AI"));
  EXPECT_NE(case_folded("a\xC3\x97"), case_folded("a\xC3\xB7"));  // x and / are no letters
}

// One PDF of a batch, or of a shard, when the pattern names no document.
TEST(OutputNamesTest, BookNameWhenNoDocumentIsNamed) {
  struct CASE {
    const char* pattern;
    OUTPUT_FORM form;
    long long shard;
    long long shards;
    const char* expected;  // the name, "each" for files per document, or the problem
  };
  const CASE cases[] = {
      {"labels.pdf", OUTPUT_FORM::pdf, 0, 0, "labels.pdf"},
      {"labels.ai", OUTPUT_FORM::document, 0, 0, "each"},
      {"labels.png", OUTPUT_FORM::png, 0, 0, "each"},
      {"label-#.pdf", OUTPUT_FORM::pdf, 0, 0, "each"},
      {"{PR-1-1}.pdf", OUTPUT_FORM::pdf, 0, 0, "each"},
      {"labels-{shard}.pdf", OUTPUT_FORM::pdf, 3, 4, "labels-3.pdf"},
      {"labels.pdf", OUTPUT_FORM::pdf, 3, 4,
       "every shard would write this PDF: put {shard} in its name"},
      // Without -shard, {shard} is left to the pattern, which names no cell with it.
      {"labels-{shard}.pdf", OUTPUT_FORM::pdf, 0, 0, "each"},
      {"{shard}-#.pdf", OUTPUT_FORM::pdf, 1, 2, "each"},
  };
  for (const CASE& c : cases) {
    SETTINGS settings;
    settings.form = c.form;
    settings.shard = c.shard;
    settings.shards = c.shards;
    std::string problem;
    const std::optional<std::string> name = book_name(c.pattern, settings, &problem);
    EXPECT_EQ(name ? *name : problem.empty() ? "each" : problem, c.expected) << c.pattern;
  }
}
