// What both readings of a point text share: the words it reads go through one stack, and
// each text operator is filed into the model with the words read since the operator
// before (at most kStackBound of them). The default reading gives it the words of the
// lines; "-keep" gives it PostScript tokens. A run keeps one reader for all its texts, so
// that the stack's room, the model a text is read into and the room for joined strings are
// made once.
#pragma once

#include <memory_resource>
#include <string>
#include <string_view>

#include "support/stack.h"
#include "text/point_text.h"
#include "textattr/text_operator.h"

class POINT_TEXT_READER {
 public:
  static constexpr int kStackBound = 10;

  POINT_TEXT_READER() : stack(true) {}

  // Where the texts that hold a placeholder are kept (by AI_TEXT_REPLACE::read).
  void keep_texts_in(std::pmr::memory_resource* memory) { texts_memory = memory; }
  std::pmr::memory_resource* kept_texts_memory() const { return texts_memory; }
  // Begins a new text; returns the reader's own model, emptied, to read it into.
  AI_POINT_TEXT& start() {
    stack.clear();
    parsed.clear();
    return parsed;
  }
  // Reads one word; a word that may be an operator and names a text operator is filed into
  // model with its operands. Returns the operator, or TEXT_OP::none. Inline: it runs once
  // per word of every text that may hold a placeholder.
  TEXT_OP read(std::string_view word, bool may_be_operator, AI_POINT_TEXT& model) {
    stack.push_bounded(word, kStackBound);
    const TEXT_OP op = may_be_operator ? text_operator(word) : TEXT_OP::none;
    if (op != TEXT_OP::none) file(op, model);
    return op;
  }
  // Reads the words of one line of the default reading, split at blanks (TOKEN).
  void read_line(std::string_view line, AI_POINT_TEXT& model);
  // The end of the text: whether its strings, joined, hold a placeholder. A word too long
  // for the stack fails a text that does ("STACK_OBJ::str size error"); any other text is
  // written as read, whatever it holds.
  bool finish(const AI_POINT_TEXT& model);

 private:
  void file(TEXT_OP op, AI_POINT_TEXT& model);

  STACK stack;
  std::pmr::memory_resource* texts_memory = std::pmr::get_default_resource();
  AI_POINT_TEXT parsed;
  std::string joined;
};
