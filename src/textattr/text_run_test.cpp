#include "textattr/text_run.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/output.h"
#include "support/stack.h"

// Formats, print order, repeated and missing operands are in the golden cases
// (text-operator-order, text-operator-missing); these are the readings they do not reach.
TEST(TextRunTest, OperandReadings) {
  const std::string long_name(300, 'F');
  const struct {
    std::vector<std::vector<std::string>> lines;  // each line's last word is its operator
    std::string printed;
  } cases[] = {
      // Tf drops the first two characters of its font word, whatever they are.
      {{{"/Courier", "9.5", "0", "-1", "Tf"}}, "/_ourier 9.500000 0.000000 -1.000000 Tf\r"},
      {{{"/", "1", "2", "3", "Tf"}}, "/_ 1.000000 2.000000 3.000000 Tf\r"},
      {{{"/_" + long_name, "0", "0", "0", "Tf"}},
       "/_" + long_name + " 0.000000 0.000000 0.000000 Tf\r"},
      // Xu's first operand is read after its prefix, whatever the prefix is.
      {{{"%_-7", "1", "2", "3", "Xu"}}, "%_-7 1 2 3 Xu\r"},
      {{{"9", "1", "2", "3", "Xu"}}, "%_0 1 2 3 Xu\r"},
      // A string loses its outer characters only; the last string and its operator win.
      {{{"(", "Tx"}}, "() Tx\r"},
      {{{"(a\\) b\\(c)", "TX"}}, "(a\\) b\\(c) TX\r"},
      {{{"(second)", "TX"}, {"(first)", "Tx"}}, "(first) Tx\r"},
      {{{"1", "Tv"}, {"0", "Ap"}, {"(x)", "Tj"}}, ""},
  };
  for (const auto& c : cases) {
    AI_TxTX run;
    STACK stack;
    for (const auto& words : c.lines) {
      for (const std::string& word : words) stack.push(word);
      run.setup(text_operator(*stack.peek(0)), stack);
    }
    Output out;
    run.print(out);
    EXPECT_EQ(c.printed, out.text()) << c.printed;
  }
}

// Only the words that name an operator are taken for one; near misses of every kind are not.
TEST(TextRunTest, WordsThatNameOperators) {
  const std::pair<const char*, TEXT_OP> words[] = {
      {"k", TEXT_OP::k},     {"G", TEXT_OP::G},     {"Tp", TEXT_OP::Tp},    {"TP", TEXT_OP::TP},
      {"Tx", TEXT_OP::Tx},   {"TX", TEXT_OP::TX},   {"Tq", TEXT_OP::Tq},    {"Ap", TEXT_OP::Ap},
      {"Ar", TEXT_OP::Ar},   {"Xu", TEXT_OP::Xu},   {"", TEXT_OP::none},    {"T", TEXT_OP::none},
      {"x", TEXT_OP::none},  {"Tj", TEXT_OP::none}, {"Txt", TEXT_OP::none}, {"kk", TEXT_OP::none},
      {"0", TEXT_OP::none},  {"12", TEXT_OP::none}, {"(k", TEXT_OP::none},  {"/k", TEXT_OP::none},
      {"Xv", TEXT_OP::none}, {"Aq", TEXT_OP::none}, {"tx", TEXT_OP::none},
  };
  for (const auto& [word, op] : words) EXPECT_EQ(op, text_operator(word)) << word;
}
