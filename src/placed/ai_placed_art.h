// A placed-art block of a layer: the lines from the word "%AI5_BeginPlace" to the word
// "%AI5_EndPlace". It is parsed into its placement, which replacement may point at a new
// EPS file, and is always written anew from that placement.
#pragma once

#include <memory>

class AI_PLACED_ART_REPLACE;
class Output;
class TEMPLATE;

class AI_PLACED_ART {
 public:
  AI_PLACED_ART();
  ~AI_PLACED_ART();
  // start is the line that holds "%AI5_BeginPlace", end the layer's last line (the bound
  // of the search); next receives the index of the "%AI5_EndPlace" line.
  void setup(const TEMPLATE& tpl, int start, int end, int* next);
  void print_new(Output& out, int* last) const;

  int first_line = 0;
  int last_line = 0;
  std::unique_ptr<AI_PLACED_ART_REPLACE> replace;
};
