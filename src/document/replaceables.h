// The objects of a document that table arguments may change, in one flat list that the
// analysis makes once: every run applies, restores, reports and prints by walking it.
#pragma once

#include <vector>

class AI_PLACED_ART_REPLACE;
class AI_TEXT_REPLACE;

// A point text with a placeholder or a placed-art block, and the layer it stands in.
struct REPLACEABLE {
  int layer;  // from 1, as the report names layers
  AI_TEXT_REPLACE* text = nullptr;
  AI_PLACED_ART_REPLACE* placed_art = nullptr;
};

using REPLACEABLES = std::vector<REPLACEABLE>;
