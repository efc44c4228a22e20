#include "support/stack.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/error.h"

namespace {

// "count: newest ... oldest", as peek walks the stack down.
std::string dump(const STACK& stack) {
  std::string out = std::to_string(stack.count()) + ":";
  for (int i = 0; stack.peek(-i); ++i) out += " " + std::string(*stack.peek(-i));
  return out;
}

}  // namespace

TEST(StackTest, WordsNewestFirst) {
  STACK stack;
  EXPECT_EQ("0:", dump(stack));
  EXPECT_EQ(nullptr, stack.shift());
  stack.push("t1");
  stack.push("t2");
  stack.push("t3");
  EXPECT_EQ("3: t3 t2 t1", dump(stack));
  EXPECT_FALSE(stack.peek(1));
  EXPECT_EQ("t1", stack.operand(2));
  EXPECT_EQ("", stack.operand(3));
  // The stack holds views: the words must stay where they are.
  std::vector<std::string> words;
  for (int i = 4; i <= 12; ++i) words.push_back("t" + std::to_string(i));
  for (const std::string& word : words) stack.push_bounded(word, 10);
  EXPECT_EQ("10: t12 t11 t10 t9 t8 t7 t6 t5 t4 t3", dump(stack));
  EXPECT_EQ("t3", stack.shift()->str);
  try {
    stack.shift();
    ADD_FAILURE() << "no error";
  } catch (const Error& error) {
    EXPECT_STREQ("free stack overflow!\n", error.what());
  }
  stack.free_all();
  stack.push("only");
  EXPECT_EQ("only", stack.shift()->str);  // the last word out leaves the stack empty
  stack.free_overflow();
  stack.push("next");
  EXPECT_EQ("1: next", dump(stack));
}

// A deferring stack keeps long words and remembers them until it is cleared; the golden cases
// show the limit of a stack that does not defer (text-long-word-limit, text-long-word-error).
TEST(StackTest, DeferringStackRemembersLongWords) {
  STACK stack(true);
  const std::string longest(STACK_OBJ::kMaxLength, 'x');
  stack.push(longest);
  EXPECT_FALSE(stack.overlong_seen());
  const std::string word(5000, 'y');
  stack.push(word);
  stack.free_all();
  EXPECT_TRUE(stack.overlong_seen());
  stack.push(word);
  EXPECT_EQ(word, stack.peek(0));
  stack.clear();
  EXPECT_FALSE(stack.overlong_seen());
  EXPECT_EQ("0:", dump(stack));
}

// However long the walk, a bounded stack holds the newest words in order, and an unbounded
// one every word; shift then takes them oldest first.
TEST(StackTest, LongWalksKeepTheNewestWords) {
  std::vector<std::string> words;
  for (int i = 0; i < 300; ++i) words.push_back("w" + std::to_string(i));
  for (int bound : {1, 3, 10, 1000}) {
    STACK stack;
    for (size_t i = 0; i < words.size(); ++i) {
      stack.push_bounded(words[i], bound);
      const size_t held = std::min(i + 1, static_cast<size_t>(bound));
      ASSERT_EQ(static_cast<int>(held), stack.count()) << bound << " " << i;
      for (size_t k = 0; k < held; ++k) ASSERT_EQ(words[i - k], stack.operand(static_cast<int>(k)));
    }
    for (size_t i = words.size() - static_cast<size_t>(stack.count()); i < words.size(); ++i) {
      ASSERT_EQ(words[i], stack.shift()->str) << bound;
      stack.free_overflow();
    }
    EXPECT_EQ(0, stack.count());
  }
}
