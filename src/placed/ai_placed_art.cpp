#include "placed/ai_placed_art.h"

#include "document/ai_document.h"
#include "document/layer.h"
#include "driver/diagnostics.h"
#include "placed/placed_art_replace.h"

AI_PLACED_ART::AI_PLACED_ART() = default;
AI_PLACED_ART::~AI_PLACED_ART() = default;

void AI_PLACED_ART::setup(const AI_DOCUMENT& doc, int start, int end, int* next) {
  first_line = start;
  int i = doc.find_ai5_line(
      start, end - 1, [](std::string_view text) { return holds_word(text, "%AI5_EndPlace"); });
  if (i < 0) fail("cannot find end of placed art\n");
  last_line = i;
  *next = i;
  replace = std::make_unique<AI_PLACED_ART_REPLACE>();
  if (doc.keeps_bytes()) {
    replace->setup_kept(doc, first_line, last_line);
  } else {
    replace->setup(doc, first_line, last_line);
  }
}

void AI_PLACED_ART::print_new(const AI_DOCUMENT&, Output& out, int* last) const {
  replace->print(out);
  *last = last_line;
}
