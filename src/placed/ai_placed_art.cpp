#include "placed/ai_placed_art.h"

#include "placed/placed_art_replace.h"
#include "support/error.h"
#include "support/token.h"
#include "template/template.h"

AI_PLACED_ART::AI_PLACED_ART() = default;
AI_PLACED_ART::~AI_PLACED_ART() = default;

void AI_PLACED_ART::setup(const TEMPLATE& tpl, int start, int end, int* next) {
  first_line = start;
  int i = tpl.find_ai5_line(
      start, end - 1, [](std::string_view text) { return holds_word(text, "%AI5_EndPlace"); });
  if (i < 0) fail("cannot find end of placed art\n");
  last_line = i;
  *next = i;
  replace = std::make_unique<AI_PLACED_ART_REPLACE>();
  replace->setup(tpl, first_line, last_line);
}

void AI_PLACED_ART::print_new(Output& out, int* last) const {
  replace->print(out);
  *last = last_line;
}
