#include "text/ai_text.h"

#include "document/ai_document.h"
#include "driver/diagnostics.h"
#include "support/output.h"
#include "text/text_replace.h"

AI_TEXT::AI_TEXT() = default;
AI_TEXT::AI_TEXT(AI_TEXT&&) noexcept = default;
AI_TEXT& AI_TEXT::operator=(AI_TEXT&&) noexcept = default;
AI_TEXT::~AI_TEXT() = default;

void AI_TEXT::setup(const AI_DOCUMENT& doc, int line, int layer_last, int* next) {
  const std::string_view opening = doc.line(line);
  text_type = !opening.empty() && opening[0] >= '0' && opening[0] <= '9' ? opening[0] - '0' : 0;
  first_line = line;
  last_line = doc.find_text_end_line(line, layer_last);
  if (last_line < 0) fail("cannot find %s\n", "TO");
  *next = last_line + 1;
  if (text_type != 0 || !AI_TEXT_REPLACE::may_hold_placeholder(doc, first_line, last_line)) {
    return;
  }
  replace = make_in<AI_TEXT_REPLACE>(doc.model_memory(), doc.model_memory());
  const bool replaceable = doc.keeps_bytes() ? replace->setup_kept(doc, first_line, last_line)
                                             : replace->setup(doc, first_line, last_line);
  if (!replaceable) replace.reset();
}

void AI_TEXT::print_new(const AI_DOCUMENT& doc, Output& out, int* last) const {
  if (replace) {
    out.integers_line({text_type}, "To");
    replace->print_new(out);
    out.line("TO");
  } else {
    print_text(doc, out);
  }
  *last = last_line;
}

void AI_TEXT::print_text(const AI_DOCUMENT& doc, Output& out) const {
  doc.print_lines(first_line, last_line, out);
}
