#include "support/stack.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "driver/diagnostics.h"

TEST(StackTest, NewStackIsEmpty) {
  STACK stack;
  EXPECT_EQ(0, stack.count());
  EXPECT_FALSE(stack.peek(0));
  EXPECT_EQ(nullptr, stack.shift());
  EXPECT_EQ("", stack.operand(1));
  stack.free_all();
  EXPECT_EQ(0, stack.count());
}

TEST(StackTest, PeekCountsBackFromTheTop) {
  STACK stack;
  stack.push("t1");
  stack.push("t2");
  stack.push("t3");
  EXPECT_EQ("t3", stack.peek(0));
  EXPECT_EQ("t2", stack.peek(-1));
  EXPECT_EQ("t1", stack.peek(-2));
  EXPECT_FALSE(stack.peek(-3));
  EXPECT_FALSE(stack.peek(1));
  EXPECT_EQ("t1", stack.operand(2));
  EXPECT_EQ("", stack.operand(3));
}

TEST(StackTest, BoundKeepsTheNewestWords) {
  STACK stack;
  std::vector<std::string> words;
  for (int i = 1; i <= 11; ++i) words.push_back("t" + std::to_string(i));
  for (const std::string& word : words) stack.push_bounded(word, 10);
  EXPECT_EQ(10, stack.count());
  EXPECT_EQ("t11", stack.peek(0));
  EXPECT_EQ("t2", stack.peek(-9));
  EXPECT_FALSE(stack.peek(-10));
}

TEST(StackTest, ShiftingTheLastEntryEmptiesTheStack) {
  STACK stack;
  stack.push("only");
  const STACK_OBJ* out = stack.shift();
  ASSERT_NE(nullptr, out);
  EXPECT_EQ("only", out->str);
  stack.free_overflow();
  EXPECT_EQ(0, stack.count());
  stack.push("next");
  EXPECT_EQ("next", stack.peek(0));
  EXPECT_FALSE(stack.peek(-1));
}

TEST(StackTest, TwoShiftsWithoutFreeingFail) {
  STACK stack;
  stack.push("a");
  stack.push("b");
  stack.shift();
  try {
    stack.shift();
    FAIL() << "no error";
  } catch (const Error& error) {
    EXPECT_STREQ("free stack overflow!\n", error.what());
  }
}

TEST(StackTest, WordLengthLimit) {
  STACK stack;
  const std::string longest(1023, 'x');
  stack.push(longest);
  EXPECT_EQ(longest, stack.peek(0));
  const std::string too_long(1024, 'x');
  try {
    stack.push(too_long);
    FAIL() << "no error";
  } catch (const Error& error) {
    EXPECT_STREQ("STACK_OBJ::str size error\n", error.what());
  }
}

TEST(StackTest, DeferringStackKeepsLongWordsAndRemembersThem) {
  STACK stack(true);
  stack.push("short");
  EXPECT_FALSE(stack.overlong_seen());
  std::string word(5000, 'y');
  stack.push(word);
  stack.free_all();
  EXPECT_TRUE(stack.overlong_seen());
  stack.push(word);
  EXPECT_EQ(word, stack.peek(0));
  stack.clear();
  EXPECT_FALSE(stack.overlong_seen());
  EXPECT_EQ(0, stack.count());
}
