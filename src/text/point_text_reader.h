// What both readings of a point text share: the words it reads go through one stack, and
// each text operator is filed into the model with the words read since the operator
// before (at most kStackBound of them). The default reading gives it the words of the
// lines; "-keep" gives it PostScript tokens. A run keeps one reader for all its texts, so
// that the stack's ring and the room for joined strings are made once.
#pragma once

#include <string>
#include <string_view>

#include "support/stack.h"
#include "textattr/text_operator.h"

class AI_POINT_TEXT;

class POINT_TEXT_READER {
 public:
  static constexpr int kStackBound = 10;

  POINT_TEXT_READER() : stack(true) {}

  // Begins a new text.
  void start() { stack.clear(); }
  // Reads one word; a word that may be an operator and names a text operator is filed into
  // model with its operands. Returns the operator, or TEXT_OP::none.
  TEXT_OP read(std::string_view word, bool may_be_operator, AI_POINT_TEXT& model);
  // The end of the text: whether its strings, joined, hold a placeholder. A word too long
  // for the stack fails a text that does ("STACK_OBJ::str size error"); any other text is
  // written as read, whatever it holds.
  bool finish(const AI_POINT_TEXT& model);

 private:
  STACK stack;
  std::string joined;
};
