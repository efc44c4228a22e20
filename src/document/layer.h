// A layer: the lines from "%AI5_BeginLayer" to its "%AI5_EndLayer--". It finds its text
// objects and placed-art blocks, hands replacement requests to them, and prints its lines
// with each object printing itself in place of its own lines.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "document/sections.h"

class AI_TEXT;
class AI_PLACED_ART;

class AI_LAYER : public LINE_RANGE {
 public:
  static constexpr int kMaxTexts = 102400;
  static constexpr int kMaxPlacedArts = 1024;

  AI_LAYER();
  ~AI_LAYER();
  // start is the "%AI5_BeginLayer" line, script_last the script's last line; next receives
  // the index of the line after the layer.
  void setup(const AI_DOCUMENT& doc, int start, int script_last, int* next);
  // A layer over the lines first to last whatever they hold: the art of a document without
  // layer comments, for "-keep".
  void setup_unmarked(const AI_DOCUMENT& doc, int first, int last);
  void print_new(const AI_DOCUMENT& doc, Output& out) const;

  void setup_replace_text(const char* id, const TAB_TEXT& table);
  void setup_replace_text(const TAB_TEXT& table);
  void setup_replace_placed_art(const char* id, const TAB_TEXT& table);
  void report_unreplaced() const;
  void restore_analysed();

  int text_count() const { return static_cast<int>(texts.size()); }
  int placed_art_count() const { return static_cast<int>(placed_arts.size()); }
  const AI_TEXT& text(int index) const { return *texts[static_cast<size_t>(index)]; }
  const AI_PLACED_ART& placed_art(int index) const {
    return *placed_arts[static_cast<size_t>(index)];
  }

 private:
  void setup_text(const AI_DOCUMENT& doc);
  void setup_placed_art(const AI_DOCUMENT& doc);

  std::vector<std::unique_ptr<AI_TEXT>> texts;
  std::vector<std::unique_ptr<AI_PLACED_ART>> placed_arts;
};

// Whether word is one of the line's words (as TOKEN splits them at " ").
bool holds_word(std::string_view line, std::string_view word);
