#include "text/point_text_reader.h"

#include "support/error.h"
#include "support/patterns.h"
#include "support/token.h"
#include "text/point_text.h"

void POINT_TEXT_READER::file(TEXT_OP op, AI_POINT_TEXT& model) {
  model.setup(op, stack);
  stack.free_all();
}

void POINT_TEXT_READER::read_line(std::string_view line, AI_POINT_TEXT& model) {
  TOKEN token;
  token.init(line, " ");
  std::string_view word;
  while (token.next(&word)) read(word, true, model);
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
