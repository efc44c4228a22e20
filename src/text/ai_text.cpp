#include "text/ai_text.h"

#include "document/ai_document.h"
#include "driver/diagnostics.h"
#include "support/output.h"
#include "text/text_replace.h"

AI_TEXT::AI_TEXT() = default;
AI_TEXT::~AI_TEXT() = default;

void AI_TEXT::setup(const AI_DOCUMENT& doc, int line, int layer_last, int* next) {
  const char* opening = doc.line(line);
  text_type = opening[0] >= '0' && opening[0] <= '9' ? opening[0] - '0' : 0;
  first_line = line;
  last_line = -1;
  for (int i = line; i <= layer_last; ++i) {
    const char* text = doc.line(i);
    if (text[0] == 'T' && text[1] == 'O') {
      last_line = i;
      break;
    }
  }
  if (last_line < 0) fail("cannot find %s\n", "TO");
  *next = last_line + 1;
  if (text_type != 0) return;
  replace = std::make_unique<AI_TEXT_REPLACE>();
  if (!replace->setup(doc, first_line, last_line)) replace.reset();
}

void AI_TEXT::print_new(const AI_DOCUMENT& doc, Output& out, int* last) const {
  if (replace) {
    out.printf("%d %s%s", text_type, "To", "\r");
    replace->print_new(out);
    out.printf("%s%s", "TO", "\r");
  } else {
    print_text(doc, out);
  }
  *last = last_line;
}

void AI_TEXT::print_text(const AI_DOCUMENT& doc, Output& out) const {
  for (int i = first_line; i <= last_line; ++i) out.line(doc.line_view(i));
}
