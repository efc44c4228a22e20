#include "text/point_text_reader.h"

#include "support/error.h"
#include "support/patterns.h"
#include "text/point_text.h"

TEXT_OP POINT_TEXT_READER::read(std::string_view word, bool may_be_operator, AI_POINT_TEXT& model) {
  stack.push_bounded(word, kStackBound);
  const TEXT_OP op = may_be_operator ? text_operator(word) : TEXT_OP::none;
  if (op == TEXT_OP::none) return op;
  model.setup(op, stack);
  stack.free_all();
  return op;
}

// Most texts have one string, which needs no joining.
bool POINT_TEXT_READER::finish(const AI_POINT_TEXT& model) {
  bool several = false;
  const std::string* only = model.only_string(&several);
  if (several) {
    model.TxTXstring("", joined);
    only = &joined;
  }
  if (!only || !holds_plain_placeholder(*only)) return false;
  if (stack.overlong_seen()) fail("STACK_OBJ::str size error\n");
  return true;
}
