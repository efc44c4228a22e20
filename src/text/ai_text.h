// A text object of a layer: the lines from "0 To" (a type digit, a blank, "To") to the next
// line that begins with "TO". A point text (type 0) whose strings hold a placeholder keeps
// a parsed model that takes table cells and prints the object anew; every other text
// object prints its lines exactly as read.
#pragma once

#include "support/arena.h"

class AI_TEXT_REPLACE;
class Output;
class POINT_TEXT_READER;
class TEMPLATE;

class AI_TEXT {
 public:
  AI_TEXT();
  AI_TEXT(AI_TEXT&&) noexcept;
  AI_TEXT& operator=(AI_TEXT&&) noexcept;
  ~AI_TEXT();
  // line is the object's "To" line, layer_last the layer's last line, the bound of the
  // search for "TO"; next receives the index of the line after the "TO" line. A point text
  // that may hold a placeholder is read through reader.
  void setup(const TEMPLATE& tpl, int line, int layer_last, int* next, POINT_TEXT_READER& reader);
  void print_new(const TEMPLATE& tpl, Output& out, int* last) const;

  int first_line = 0;
  int last_line = 0;
  int text_type = 0;
  IN_RESOURCE<AI_TEXT_REPLACE> replace;
};
