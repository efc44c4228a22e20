#include "text/point_text.h"

#include <gtest/gtest.h>

#include "driver/diagnostics.h"
#include "driver/options.h"
#include "support/printed.h"
#include "support/stack.h"
#include "support/token.h"
#include "table/tab_text.h"

namespace {

// Parses operator lines into a point text the way a text object does.
AI_POINT_TEXT parse(const std::vector<std::string>& lines) {
  AI_POINT_TEXT text;
  STACK stack;
  TOKEN token;
  for (const std::string& line : lines) {
    token.init(line, " ");
    std::string_view word;
    while (token.next(&word)) {
      stack.push_bounded(word, 10);
      const TEXT_OP op = text_operator(word);
      if (op == TEXT_OP::none) continue;
      text.setup(op, stack);
      stack.free_all();
    }
  }
  return text;
}

// What the text prints, each "\r" shown as "|".
std::string printed_lines(const AI_POINT_TEXT& text) {
  std::string lines = printed(text);
  for (char& c : lines) {
    if (c == '\r') c = '|';
  }
  return lines;
}

TAB_TEXT table(const std::string& bytes) {
  TAB_TEXT tab;
  tab.init_from_bytes(bytes);
  return tab;
}

// The message of the Error that filling the text's TX placeholders from cells throws.
std::string replace_error(AI_POINT_TEXT& text, const TAB_TEXT& cells) {
  try {
    text.setup_tabtxt("TX", cells);
  } catch (const Error& error) {
    return error.what();
  }
  return "(no error)";
}

class PointTextTest : public ::testing::Test {
 protected:
  void SetUp() override {
    reset_options();
    reset_expansion_pool(0);
  }
};

}  // namespace

TEST_F(PointTextTest, RunsGroupStylesWithTheirString) {
  AI_POINT_TEXT text = parse({"0 g", "(a) Tx", "(b) TX", "/_F 1 2 3 Tf", "(c) Tx", "1 g"});
  EXPECT_EQ(
      "1.000000 0.000000 0.000000 1.000000 0.000000 0.000000 0.000000 Tp||"
      "0.000000 g|(a) Tx|(b) TX|/_F 1.000000 2.000000 3.000000 Tf|(c) Tx|1.000000 g|",
      printed_lines(text));
  EXPECT_EQ("a\tb\tc", *text.TxTXstring("\t"));
  EXPECT_EQ("abc", *text.TxTXstring(nullptr));
  EXPECT_FALSE(parse({"0 g"}).TxTXstring(nullptr).has_value());
}

TEST_F(PointTextTest, ReplacesByIdentifierOnly) {
  AI_POINT_TEXT text = parse({"(X TX-2-3 Y PH-2-3 TX-2-3) Tx"});
  text.setup_tabtxt("TX", table("a\n\t\tabc\n"));
  EXPECT_EQ("X abc Y PH-2-3 abc", *text.TxTXstring(nullptr));
  text.setup_tabtxt(table("a\n\t\tcell\n"));
  EXPECT_EQ("X abc Y cell abc", *text.TxTXstring(nullptr));
  // An identifier is a piece of a regular expression; one that is more than letters and
  // digits still finds what it matches.
  AI_POINT_TEXT any = parse({"(TAX-1-1 TX-1-1) Tx"});
  any.setup_tabtxt("T.X", table("c\n"));
  EXPECT_EQ("c TX-1-1", *any.TxTXstring(nullptr));
  AI_POINT_TEXT empty_id = parse({"(A-1-1) Tx"});
  empty_id.setup_tabtxt("", table("c\n"));
  EXPECT_EQ("Ac", *empty_id.TxTXstring(nullptr));
  // "|" splits the expression: its first branch matches an A alone, without any dash.
  option_rm = 1;
  AI_POINT_TEXT branch = parse({"(pAs) Tx"});
  branch.setup_tabtxt("A|X", table("c\n"));
  EXPECT_EQ("ps", *branch.TxTXstring(nullptr));
}

TEST_F(PointTextTest, NewSyntaxIsReplacedWholeAndSetsFonts) {
  option_rx = 1;
  const TAB_TEXT tab = table("1234\n");
  AI_POINT_TEXT text = parse({"/_Helvetica 12 12 0 Tf", "(Price TX-1-1-RimbaNum_ EUR) Tx",
                              "/_Helvetica 12 12 0 Tf", "(TX-1-1) Tx"});
  text.setup_tabtxt("TX", tab);
  EXPECT_EQ("Price \\335\\253n&q| EUR\tTX-1-1", *text.TxTXstring("\t"));
  EXPECT_NE(std::string::npos, printed_lines(text).find("/_RimbaNum 12.000000"));
  // A second argument over the same run leaves the encoded number alone.
  text.setup_tabtxt("TX", tab);
  EXPECT_EQ("Price \\335\\253n&q| EUR\tTX-1-1", *text.TxTXstring("\t"));
}

TEST_F(PointTextTest, ExpansionThatNeverEndsIsStopped) {
  AI_POINT_TEXT text = parse({"(TX-1-1) Tx"});
  EXPECT_EQ("endless expansion of placeholder TX-1-1\n",
            replace_error(text, table("TX-1-1 again\n")));
  AI_POINT_TEXT doubling = parse({"(TX-1-1) Tx"});
  EXPECT_EQ("endless expansion of placeholder TX-1-1\n",
            replace_error(doubling, table("TX-1-1 TX-1-1\n")));
  // Texts that each grow within bounds still draw on one pool for the whole run.
  reset_expansion_pool(0);
  std::string cells;
  for (int i = 0; i < 10; ++i) cells += "TX-1-2 ";
  const TAB_TEXT& shared = table(cells + "\t" + std::string(60000, 'x') + "\n");
  AI_POINT_TEXT first = parse({"(TX-1-1) Tx"});
  first.setup_tabtxt("TX", shared);
  EXPECT_EQ(10u * 60001u, first.TxTXstring(nullptr)->size());
  AI_POINT_TEXT second = parse({"(TX-1-1) Tx"});
  EXPECT_EQ("endless expansion of placeholder TX-1-2\n", replace_error(second, shared));
  // Placeholders kept for want of a cell are met again each time the walk starts over: 58
  // of them a pass, 412 bytes more a pass, so the 100,000th comes long before 1 MiB is used.
  reset_expansion_pool(0);
  std::string kept;
  for (int i = 0; i < 58; ++i) kept += "TX-9-9 ";
  AI_POINT_TEXT passing = parse({"(TX-1-1) Tx"});
  EXPECT_EQ("endless expansion of placeholder TX-9-9\n",
            replace_error(passing, table(kept + "TX-1-1\n")));
  reset_expansion_pool(0);
  AI_POINT_TEXT nested = parse({"(TX-1-1) Tx"});
  nested.setup_tabtxt("TX", table("<TX-1-2>\tend\n"));
  EXPECT_EQ("<end>", *nested.TxTXstring(nullptr));
}
