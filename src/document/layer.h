// A layer: the lines from "%AI5_BeginLayer" to its "%AI5_EndLayer--". It finds its text
// objects and placed-art blocks and prints its lines with each object printing itself in
// place of its own lines.
#pragma once

#include <cstddef>
#include <memory>
#include <memory_resource>
#include <string_view>
#include <vector>

#include "document/replaceables.h"
#include "document/sections.h"
#include "text/ai_text.h"

class AI_PLACED_ART;

class AI_LAYER : public LINE_RANGE {
 public:
  static constexpr int kMaxTexts = 102400;
  static constexpr int kMaxPlacedArts = 1024;

  // memory: where the table of texts is kept, with the texts' models.
  explicit AI_LAYER(std::pmr::memory_resource* memory);
  ~AI_LAYER();
  // start is the "%AI5_BeginLayer" line, script_last the script's last line; next receives
  // the index of the line after the layer.
  void setup(const TEMPLATE& tpl, int start, int script_last, int* next, POINT_TEXT_READER& reader);
  // A layer over the lines first to last whatever they hold: the art of a document without
  // layer comments, for "-keep".
  void setup_unmarked(const TEMPLATE& tpl, int first, int last, POINT_TEXT_READER& reader);
  void print_new(const TEMPLATE& tpl, Output& out) const;
  // How many objects list adds.
  size_t replaceable_count() const;
  // Adds the layer's replaceable objects to objects: its texts, then its placed art.
  void list(int number, REPLACEABLES& objects);

 private:
  void setup_text(const TEMPLATE& tpl, POINT_TEXT_READER& reader);
  void setup_placed_art(const TEMPLATE& tpl);

  // By value, in the memory of the models: a layer may hold a hundred thousand texts, most of
  // them a few lines each.
  std::pmr::vector<AI_TEXT> texts;
  std::vector<std::unique_ptr<AI_PLACED_ART>> placed_arts;
};
