#include "text/ai_text.h"

#include "support/error.h"
#include "support/output.h"
#include "template/template.h"
#include "text/text_replace.h"

AI_TEXT::AI_TEXT() = default;
AI_TEXT::AI_TEXT(AI_TEXT&&) noexcept = default;
AI_TEXT& AI_TEXT::operator=(AI_TEXT&&) noexcept = default;
AI_TEXT::~AI_TEXT() = default;

void AI_TEXT::setup(const TEMPLATE& tpl, int line, int layer_last, int* next,
                    POINT_TEXT_READER& reader) {
  first_line = line;
  last_line = tpl.find_text_end_line(line, layer_last);
  if (last_line < 0) fail("cannot find %s\n", "TO");
  // The type is the opening line's first byte, read from the object's bytes, which the
  // template finds without looking for where that line ends.
  const char type = tpl.bytes_of_lines(first_line, last_line)[0];
  text_type = type >= '0' && type <= '9' ? type - '0' : 0;
  *next = last_line + 1;
  if (text_type != 0 || !AI_TEXT_REPLACE::may_hold_placeholder(tpl, first_line, last_line)) {
    return;
  }
  replace = AI_TEXT_REPLACE::read(tpl, first_line, last_line, reader);
}

void AI_TEXT::print_new(const TEMPLATE& tpl, Output& out, int* last) const {
  if (replace) {
    out.integers_line({text_type}, "To");
    replace->point_text().print(out);
    out.line("TO");
  } else {
    tpl.print_lines(first_line, last_line, out);
  }
  *last = last_line;
}
