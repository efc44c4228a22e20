#include "textattr/point_attributes.h"

#include <gtest/gtest.h>
#include <initializer_list>
#include <string>

#include "support/printed.h"
#include "support/stack.h"

namespace {

// Pushes one template line and files its operator, the last word, as the point text does.
void read(AI_ATTRIBUTES& attributes, STACK& stack, std::initializer_list<const char*> words) {
  for (const char* word : words) stack.push(word);
  const TEXT_OP op = text_operator(*stack.peek(0));
  attributes.create(op);
  attributes.setup(op, stack);
}

}  // namespace

TEST(PointAttributesTest, Tp) {
  EXPECT_EQ("1.000000 0.000000 0.000000 1.000000 0.000000 0.000000 0.000000 Tp\r",
            printed(OP_Tp()));
  OP_Tp tp;
  tp.setup(1, 0, 0, 1, 72, 700, 0);
  EXPECT_EQ("1.000000 0.000000 0.000000 1.000000 72.000000 700.000000 0.000000 Tp\r", printed(tp));
}

TEST(PointAttributesTest, Tv) {
  OP_Tv tv;
  EXPECT_EQ("0 Tv\r", printed(tv));
  tv.setup(-3);
  EXPECT_EQ("-3 Tv\r", printed(tv));
}

TEST(PointAttributesTest, NothingReadPrintsNothing) {
  AI_ATTRIBUTES attributes;
  STACK stack;
  read(attributes, stack, {"1", "Tv"});
  EXPECT_EQ("", printed(attributes));
}

TEST(PointAttributesTest, ArAloneKeepsItsValue) {
  AI_ATTRIBUTES attributes;
  STACK stack;
  read(attributes, stack, {"800", "Ar"});
  EXPECT_EQ("800 Ar\r", printed(attributes));
}

TEST(PointAttributesTest, ApPrintsBeforeAr) {
  AI_ATTRIBUTES attributes;
  STACK stack;
  read(attributes, stack, {"500", "Ar"});
  read(attributes, stack, {"1", "Ap"});
  EXPECT_EQ("1 Ap\r500 Ar\r", printed(attributes));
}

TEST(PointAttributesTest, RepeatedApKeepsTheLaterValue) {
  AI_ATTRIBUTES attributes;
  STACK stack;
  read(attributes, stack, {"1", "Ap"});
  read(attributes, stack, {"2.5", "Ap"});
  EXPECT_EQ("2 Ap\r", printed(attributes));
}

TEST(PointAttributesTest, MissingOperandReadsAsZero) {
  AI_ATTRIBUTES attributes;
  STACK stack;
  read(attributes, stack, {"Ar"});
  EXPECT_EQ("0 Ar\r", printed(attributes));
}
