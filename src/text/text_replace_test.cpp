#include "text/text_replace.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

#include "support/output.h"
#include "support/patterns.h"
#include "support/regex.h"
#include "template/template.h"
#include "text/point_text_reader.h"

namespace {

// A template with one point text whose runs are closed by the given operator lines.
std::string one_text(const std::vector<std::string>& run_lines, const char* line_end = "\r") {
  std::string bytes = "%!PS-Adobe\r0 To\r1 0 0 1 0 0 0 Tp\rTP\r/_Helvetica-Bold 6 7.6 0 Tf\r";
  for (const std::string& line : run_lines) bytes += line + line_end;
  return bytes + "TO\r%%EOF\r";
}

struct Verdicts {
  bool may_hold;
  bool holds;
};

// The pre-check's verdict and the parse's, as the default reading or "-keep" reads the text.
Verdicts judge(const std::string& bytes, bool keep = false) {
  const TEMPLATE tpl = keep ? TEMPLATE(FileBytes(bytes), TEMPLATE::KEEP_BYTES()) : TEMPLATE(bytes);
  const int first = tpl.find_text_line(0, tpl.line_count() - 1);
  const int last = tpl.find_text_end_line(first, tpl.line_count() - 1);
  POINT_TEXT_READER reader;
  return {AI_TEXT_REPLACE::may_hold_placeholder(tpl, first, last),
          AI_TEXT_REPLACE::read(tpl, first, last, reader) != nullptr};
}

// The first point text of bytes as reader reads and keeps it, printed; "-" when it is not
// kept.
std::string printed(const std::string& bytes, POINT_TEXT_READER& reader) {
  const TEMPLATE tpl(bytes);
  const int first = tpl.find_text_line(0, tpl.line_count() - 1);
  const int last = tpl.find_text_end_line(first, tpl.line_count() - 1);
  const auto replace = AI_TEXT_REPLACE::read(tpl, first, last, reader);
  if (!replace) return "-";
  Output out;
  replace->point_text().print(out);
  return std::string(out.text());
}

}  // namespace

// One reader reads all texts of a run: each is kept as a reader new to it would keep it,
// nothing of the text before carried over, whether it is copied or (many runs) taken over.
TEST(TextReplaceTest, EachTextIsReadAsIfByANewReader) {
  std::vector<std::string> many_runs;
  for (int i = 0; i < 300; ++i) many_runs.push_back("0 Tr\r(AB-1-" + std::to_string(i) + ") Tx");
  const std::string texts[] = {
      one_text({"0.5 g", "12 Tz", "(AB-1-1) Tx"}),
      "%!PS-Adobe\r0 To\r1 0 0 1 5 6 0 Tp\r2 Tv\r1 Ap\r700 Ar\r(AB-1-1) TX\rTO\r%%EOF\r",
      one_text({"(no placeholder) Tx"}),
      one_text(many_runs),
      "%!PS-Adobe\r0 To\r(AB-2-2) Tx\rTO\r%%EOF\r",  // no Tp, no TP: the defaults
      one_text({"0 0 0 1 k", "(AB-3-3) Tx", "(more) Tx"}),
  };
  POINT_TEXT_READER shared;
  for (const std::string& before : texts) {
    printed(before, shared);
    for (const std::string& text : texts) {
      POINT_TEXT_READER fresh;
      const std::string expected = printed(text, fresh);
      EXPECT_EQ(expected, printed(text, shared)) << text << "\nafter\n" << before;
    }
  }
  POINT_TEXT_READER fresh;
  EXPECT_EQ("-", printed(texts[2], fresh));
  EXPECT_NE(std::string::npos, printed(texts[1], fresh).find("2 Tv\r\r1 Ap\r700 Ar\r"));
}

// A placeholder split over runs at every place is still found: in strings, where each dash
// may end its string right before the operator, and in words, the operator on the operand's
// line or on the next.
TEST(TextReplaceTest, SplitPlaceholdersAreNeverPassedOver) {
  const std::string placeholder = "AB-12-34";
  const std::pair<const char*, const char*> forms[] = {{"(", ")Tx"}, {"x", "y Tx"}, {"x", "y\rTx"}};
  for (size_t a = 0; a <= placeholder.size(); ++a) {
    for (size_t b = a; b <= placeholder.size(); ++b) {
      const std::string runs[3] = {placeholder.substr(0, a), placeholder.substr(a, b - a),
                                   placeholder.substr(b)};
      for (const auto& [open, close] : forms) {
        const Verdicts verdicts = judge(
            one_text({open + runs[0] + close, open + runs[1] + close, open + runs[2] + close}));
        EXPECT_TRUE(verdicts.holds && verdicts.may_hold) << a << "," << b << " " << open;
      }
    }
  }
}

// Whatever the runs hold, a text with a placeholder is never judged unable to hold one, as
// either reading reads it (-keep with LF line ends, escapes and hex strings).
TEST(TextReplaceTest, ThePreCheckNeverRejectsAReplaceableText) {
  std::mt19937 random(11);
  const std::vector<std::string> pieces = {"AB", "AB-1", "-",  "12",    "-3",   "(",    ")",
                                           "x",  " ",    "\\", "\\055", "<2D>", "\\061"};
  int replaceable = 0;
  int spared = 0;
  for (int round = 0; round < 10000; ++round) {
    const bool keep = round % 2 == 1;
    const char* line_end = keep ? "\n" : "\r";
    std::vector<std::string> lines;
    const int runs = 1 + static_cast<int>(random() % 4);
    for (int r = 0; r < runs; ++r) {
      std::string word;
      const int length = static_cast<int>(random() % 6);
      for (int i = 0; i < length; ++i) word += pieces[random() % pieces.size()];
      if (keep) word = "(" + word + ")";  // only strings hold text when -keep reads it
      // The operator on the operand's line or on a line of its own.
      lines.push_back(word + (random() % 2 ? " " : line_end) + (random() % 2 ? "Tx" : "TX"));
    }
    const Verdicts verdicts = judge(one_text(lines, line_end), keep);
    if (verdicts.holds) {
      ++replaceable;
      EXPECT_TRUE(verdicts.may_hold) << one_text(lines);
    }
    if (!verdicts.may_hold) ++spared;
  }
  // Both kinds occur, so the check above is not empty.
  EXPECT_GT(replaceable, 50);
  EXPECT_GT(spared, 500);
}

// -keep reads escapes and hex strings, so a placeholder need not hold a dash as written.
TEST(TextReplaceTest, EscapedPlaceholdersPassThePreCheckOfKeep) {
  for (const char* run :
       {"(AB\\05512\\055\\061) Tx", "<41422D312D31> Tx", "(AB-\n1-1)Tx", "(AB-1\\0551)Tx"}) {
    const Verdicts verdicts = judge(one_text({run}, "\n"), true);
    EXPECT_EQ(std::string(run) != "(AB-\n1-1)Tx", verdicts.holds) << run;
    EXPECT_TRUE(verdicts.may_hold || !verdicts.holds) << run;
  }
}
