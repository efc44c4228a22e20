#include "textattr/text_run.h"

#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <utility>

#include "support/output.h"
#include "support/printed.h"
#include "support/stack.h"

namespace {

class TextRunTest : public ::testing::Test {
 protected:
  // Pushes the words of one template line onto the object's stack and files its operator,
  // the last word, into the run.
  void read(std::initializer_list<const char*> words) {
    for (const char* word : words) stack.push(word);
    run.setup(text_operator(*stack.peek(0)), stack);
  }

  std::string printed() const { return ::printed(run); }

  AI_TxTX run;
  STACK stack;
};

}  // namespace

TEST_F(TextRunTest, WorkedExampleRuns) {
  read({"0", "Tr"});
  read({"0", "g"});
  read({"/_Helvetica", "12", "10.5", "-2", "Tf"});
  read({"(Hello)", "Tx"});
  EXPECT_EQ(
      "0.000000 g\r"
      "/_Helvetica 12.000000 10.500000 -2.000000 Tf\r"
      "0 Tr\r"
      "(Hello) Tx\r",
      printed());

  AI_TxTX second;
  stack.push("(\\r)");
  stack.push("TX");
  second.setup(TEXT_OP::TX, stack);
  Output out;
  second.print(out);
  EXPECT_EQ("(\\r) TX\r", out.text());
}

TEST_F(TextRunTest, PrintOrderIsFixedWhateverTheTemplateOrder) {
  read({"(end)", "Tx"});
  read({"3", "Tq"});
  read({"%_1", "2", "3", "4", "Xu"});
  read({"5", "Ts"});
  read({"6", "7", "TK"});
  read({"8", "9", "Tk"});
  read({"10", "11", "Tl"});
  read({"12", "13", "Tz"});
  read({"14", "Tt"});
  read({"15", "Ta"});
  read({"16", "TV"});
  read({"17", "Tr"});
  read({"/_F", "1", "2", "3", "Tf"});
  read({"0.5", "G"});
  read({"1", "2", "3", "4", "K"});
  read({"0.25", "g"});
  read({"0.1", "0.2", "0.3", "0.4", "k"});
  EXPECT_EQ(
      "0.100000 0.200000 0.300000 0.400000 k\r"
      "0.250000 g\r"
      "1.000000 2.000000 3.000000 4.000000 K\r"
      "0.500000 G\r"
      "/_F 1.000000 2.000000 3.000000 Tf\r"
      "17 Tr\r"
      "16 TV\r"
      "15 Ta\r"
      "14 Tt\r"
      "12.000000 13.000000 Tz\r"
      "10.000000 11.000000 Tl\r"
      "8 9 Tk\r"
      "6 7 TK\r"
      "5.000000 Ts\r"
      "%_1 2 3 4 Xu\r"
      "3 Tq\r"
      "(end) Tx\r",
      printed());
}

TEST_F(TextRunTest, RepeatedOperatorKeepsOnlyTheLaterOperands) {
  read({"0", "0", "0", "1", "k"});
  read({"0.5", "0.5", "0", "0", "k"});
  read({"1", "Tr"});
  read({"2", "Tr"});
  read({"/_A", "10", "12", "0", "Tf"});
  read({"/_B", "11", "13", "0", "Tf"});
  EXPECT_EQ(
      "0.500000 0.500000 0.000000 0.000000 k\r"
      "/_B 11.000000 13.000000 0.000000 Tf\r"
      "2 Tr\r",
      printed());
  EXPECT_EQ("B", run.font_name);
}

TEST_F(TextRunTest, OperandsAreTheNearestStackEntries) {
  // Two blanks in a row make an empty word, which is the g's operand.
  read({"0.5", "", "g"});
  read({"2.5", "Tt"});
  read({"x", "Ts"});
  EXPECT_EQ("0.000000 g\r2 Tt\r0.000000 Ts\r", printed());
}

TEST_F(TextRunTest, MissingOperandsReadAsEmptyWords) {
  read({"1", "K"});
  read({"Tx"});
  EXPECT_EQ("0.000000 0.000000 0.000000 1.000000 K\r() Tx\r", printed());

  AI_TxTX font_only;
  STACK short_stack;
  short_stack.push("Tf");
  font_only.setup(TEXT_OP::Tf, short_stack);
  EXPECT_TRUE(font_only.has(TEXT_OP::Tf));
  EXPECT_EQ("", font_only.font_name);
}

// The font name is the word after its first two characters, whatever they are.
TEST_F(TextRunTest, FontNameDropsTheFirstTwoCharacters) {
  const std::string long_name(300, 'F');
  const std::pair<std::string, std::string> cases[] = {
      {"/_Times-Roman", "/_Times-Roman 12.000000 10.000000 2.000000 Tf\r"},
      {"/Courier", "/_ourier 12.000000 10.000000 2.000000 Tf\r"},
      {"/_", "/_ 12.000000 10.000000 2.000000 Tf\r"},
      {"/", "/_ 12.000000 10.000000 2.000000 Tf\r"},
      {"/_" + long_name, "/_" + long_name + " 12.000000 10.000000 2.000000 Tf\r"},
  };
  for (const auto& [word, line] : cases) {
    read({word.c_str(), "12", "10", "2", "Tf"});
    EXPECT_EQ(line, printed()) << word;
  }
  run.drop(TEXT_OP::Tf);
  EXPECT_FALSE(run.has(TEXT_OP::Tf));
  EXPECT_EQ("", printed());
}

TEST_F(TextRunTest, XuFirstOperandFollowsItsPrefix) {
  read({"%_0", "50", "100", "0", "Xu"});
  EXPECT_EQ("%_0 50 100 0 Xu\r", printed());
  read({"%_-7", "1", "2", "3", "Xu"});
  EXPECT_EQ(-7, run.operand(TEXT_OP::Xu, 0));
  read({"9", "1", "2", "3", "Xu"});
  EXPECT_EQ(0, run.operand(TEXT_OP::Xu, 0));
}

TEST_F(TextRunTest, StringOperandLosesOnlyItsOuterCharacters) {
  read({"()", "Tx"});
  EXPECT_EQ("() Tx\r", printed());
  read({"(a\\) b\\(c)", "Tx"});
  EXPECT_EQ("a\\) b\\(c", *run.string());
  read({"(", "Tx"});
  EXPECT_EQ("", *run.string());
}

TEST_F(TextRunTest, TabInAStringIsKeptAsItsEscape) {
  read({"(a\tb\t)", "TX"});
  EXPECT_EQ("a\\tb\\t", *run.string());
  EXPECT_EQ("(a\\tb\\t) TX\r", printed());
}

TEST_F(TextRunTest, StringKeepsItsOperator) {
  EXPECT_EQ(nullptr, run.string());
  read({"(second)", "TX"});
  EXPECT_EQ("second", *run.string());
  *run.string() = "new";
  EXPECT_EQ("(new) TX\r", printed());
  read({"(first)", "Tx"});
  EXPECT_EQ("(first) Tx\r", printed());
}

TEST_F(TextRunTest, StyleOnlyRunAndUnknownOperators) {
  read({"1", "Tv"});
  read({"0", "Ap"});
  read({"(x)", "Tj"});
  EXPECT_EQ("", printed());
  read({"0.5", "g"});
  EXPECT_EQ("0.500000 g\r", printed());
  EXPECT_EQ(nullptr, run.string());
}
