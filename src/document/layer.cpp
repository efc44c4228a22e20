#include "document/layer.h"

#include <algorithm>
#include <cstring>

#include "document/ai_document.h"
#include "driver/diagnostics.h"
#include "placed/ai_placed_art.h"
#include "placed/placed_art_replace.h"
#include "support/output.h"
#include "support/token.h"
#include "text/ai_text.h"
#include "text/text_replace.h"

bool holds_word(std::string_view line, std::string_view word) {
  // Most lines cannot hold the word at all; only those that do are split into words.
  if (line.find(word) == std::string_view::npos) return false;
  TOKEN token;
  token.init(line, " ");
  std::string_view w;
  while (token.next(&w)) {
    if (w == word) return true;
  }
  return false;
}

AI_LAYER::AI_LAYER() = default;
AI_LAYER::~AI_LAYER() = default;

void AI_LAYER::setup(const AI_DOCUMENT& doc, int start, int script_last, int* next) {
  first_line = start;
  last_line = find_comment(doc, start, script_last, "%AI5_EndLayer--");
  if (last_line < 0) fail("cannot find %s\n", "%AI5_EndLayer--");
  *next = last_line + 1;
  setup_text(doc);
  setup_placed_art(doc);
}

void AI_LAYER::setup_unmarked(const AI_DOCUMENT& doc, int first, int last) {
  first_line = first;
  last_line = last;
  setup_text(doc);
  setup_placed_art(doc);
}

// A text object starts at a line whose third and fourth characters are "To" ("0 To").
void AI_LAYER::setup_text(const AI_DOCUMENT& doc) {
  for (int i = first_line; (i = doc.find_text_line(i, last_line - 1)) >= 0;) {
    if (texts.size() == kMaxTexts) fail("overflow text\n");
    auto object = std::make_unique<AI_TEXT>();
    object->setup(doc, i, last_line, &i);
    texts.push_back(std::move(object));
  }
}

void AI_LAYER::setup_placed_art(const AI_DOCUMENT& doc) {
  auto begins_placed_art = [](std::string_view text) {
    return holds_word(text, "%AI5_BeginPlace");
  };
  for (int i = first_line; (i = doc.find_ai5_line(i, last_line - 1, begins_placed_art)) >= 0; ++i) {
    if (placed_arts.size() == kMaxPlacedArts) fail("overflow placed art\n");
    auto object = std::make_unique<AI_PLACED_ART>();
    object->setup(doc, i, last_line, &i);
    placed_arts.push_back(std::move(object));
  }
}

// Each object prints itself at its own first line; an object that begins inside another
// one (a malformed template) is passed over, so printing never runs past either table. The
// lines between objects are written as one range.
void AI_LAYER::print_new(const AI_DOCUMENT& doc, Output& out) const {
  size_t next_text = 0;
  size_t next_placed = 0;
  for (int i = first_line; i <= last_line;) {
    while (next_text < texts.size() && texts[next_text]->first_line < i) ++next_text;
    while (next_placed < placed_arts.size() && placed_arts[next_placed]->first_line < i) {
      ++next_placed;
    }
    const int text_at = next_text < texts.size() ? texts[next_text]->first_line : last_line + 1;
    const int placed_at =
        next_placed < placed_arts.size() ? placed_arts[next_placed]->first_line : last_line + 1;
    const int object_at = std::min(text_at, placed_at);
    int last = object_at - 1;
    if (object_at > i) {
      doc.print_lines(i, last, out);
    } else if (text_at == i) {
      texts[next_text++]->print_new(doc, out, &last);
    } else {
      placed_arts[next_placed++]->print_new(doc, out, &last);
    }
    i = last + 1;
  }
}

void AI_LAYER::setup_replace_text(const char* id, const TAB_TEXT& table) {
  for (auto& object : texts) {
    if (object->replace) object->replace->setup_tabtxt(id, table);
  }
}

void AI_LAYER::setup_replace_text(const TAB_TEXT& table) {
  for (auto& object : texts) {
    if (object->replace) object->replace->setup_tabtxt(table);
  }
}

void AI_LAYER::setup_replace_placed_art(const char* id, const TAB_TEXT& table) {
  for (auto& object : placed_arts) {
    if (object->replace) object->replace->setup_tabtxt(id, table);
  }
}

void AI_LAYER::report_unreplaced() const {
  for (const auto& object : texts) {
    if (object->replace) object->replace->report_unreplaced();
  }
  for (const auto& object : placed_arts) object->replace->report_unreplaced();
}

void AI_LAYER::restore_analysed() {
  for (auto& object : texts) {
    if (object->replace) object->replace->restore_analysed();
  }
  for (auto& object : placed_arts) object->replace->restore_analysed();
}
