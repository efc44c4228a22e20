#include "document/layer.h"

#include <algorithm>
#include <cstring>

#include "placed/ai_placed_art.h"
#include "placed/placed_art_replace.h"
#include "support/error.h"
#include "support/output.h"
#include "support/token.h"
#include "template/template.h"
#include "text/ai_text.h"
#include "text/text_replace.h"

AI_LAYER::AI_LAYER(std::pmr::memory_resource* memory) : texts(memory) {}
AI_LAYER::~AI_LAYER() = default;

void AI_LAYER::setup(const TEMPLATE& tpl, int start, int script_last, int* next,
                     POINT_TEXT_READER& reader) {
  first_line = start;
  last_line = tpl.find_comment(start, script_last, "%AI5_EndLayer--");
  if (last_line < 0) fail("cannot find %s\n", "%AI5_EndLayer--");
  *next = last_line + 1;
  setup_text(tpl, reader);
  setup_placed_art(tpl);
}

void AI_LAYER::setup_unmarked(const TEMPLATE& tpl, int first, int last, POINT_TEXT_READER& reader) {
  first_line = first;
  last_line = last;
  setup_text(tpl, reader);
  setup_placed_art(tpl);
}

// A text object starts at a line whose third and fourth characters are "To" ("0 To").
// The vector is sized first: grown by doubling, a layer of a hundred thousand texts would
// touch twice the memory it keeps.
void AI_LAYER::setup_text(const TEMPLATE& tpl, POINT_TEXT_READER& reader) {
  texts.reserve(
      std::min(tpl.text_line_count(first_line, last_line - 1), static_cast<size_t>(kMaxTexts)));
  for (int i = first_line; (i = tpl.find_text_line(i, last_line - 1)) >= 0;) {
    if (texts.size() == kMaxTexts) fail("overflow text\n");
    texts.emplace_back().setup(tpl, i, last_line, &i, reader);
  }
}

void AI_LAYER::setup_placed_art(const TEMPLATE& tpl) {
  auto begins_placed_art = [](std::string_view text) {
    return holds_word(text, "%AI5_BeginPlace");
  };
  for (int i = first_line; (i = tpl.find_ai5_line(i, last_line - 1, begins_placed_art)) >= 0; ++i) {
    if (placed_arts.size() == kMaxPlacedArts) fail("overflow placed art\n");
    auto object = std::make_unique<AI_PLACED_ART>();
    object->setup(tpl, i, last_line, &i);
    placed_arts.push_back(std::move(object));
  }
}

// Each object prints itself at its own first line; an object that begins inside another
// one (a malformed template) is passed over, so printing never runs past either table. The
// lines between objects are written as one range.
void AI_LAYER::print_new(const TEMPLATE& tpl, Output& out) const {
  size_t next_text = 0;
  size_t next_placed = 0;
  for (int i = first_line; i <= last_line;) {
    while (next_text < texts.size() && texts[next_text].first_line < i) ++next_text;
    while (next_placed < placed_arts.size() && placed_arts[next_placed]->first_line < i) {
      ++next_placed;
    }
    const int text_at = next_text < texts.size() ? texts[next_text].first_line : last_line + 1;
    const int placed_at =
        next_placed < placed_arts.size() ? placed_arts[next_placed]->first_line : last_line + 1;
    const int object_at = std::min(text_at, placed_at);
    int last = object_at - 1;
    if (object_at > i) {
      tpl.print_lines(i, last, out);
    } else if (text_at == i) {
      texts[next_text++].print_new(tpl, out, &last);
    } else {
      placed_arts[next_placed++]->print_new(out, &last);
    }
    i = last + 1;
  }
}

size_t AI_LAYER::replaceable_count() const {
  const auto with_model = std::count_if(
      texts.begin(), texts.end(), [](const AI_TEXT& object) { return object.replace != nullptr; });
  return static_cast<size_t>(with_model) + placed_arts.size();
}

void AI_LAYER::list(int number, REPLACEABLES& objects) {
  for (AI_TEXT& object : texts) {
    if (object.replace) objects.push_back({number, object.replace.get(), nullptr});
  }
  for (auto& object : placed_arts) objects.push_back({number, nullptr, object->replace.get()});
}
