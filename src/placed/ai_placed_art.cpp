#include "placed/ai_placed_art.h"

#include "document/ai_document.h"
#include "document/layer.h"
#include "driver/diagnostics.h"
#include "placed/placed_art_replace.h"
#include "support/output.h"

AI_PLACED_ART::AI_PLACED_ART() = default;
AI_PLACED_ART::~AI_PLACED_ART() = default;

void AI_PLACED_ART::setup(const AI_DOCUMENT& doc, int start, int end, int* next) {
  first_line = start;
  int i = start;
  while (i < end && !holds_word(doc.line(i), "%AI5_EndPlace")) ++i;
  if (i >= end) fail("cannot find end of placed art\n");
  last_line = i;
  *next = i;
}

void AI_PLACED_ART::print_new(const AI_DOCUMENT& doc, Output& out, int* last) const {
  for (int i = first_line; i <= last_line; ++i) out.line(doc.line(i));
  *last = last_line;
}
