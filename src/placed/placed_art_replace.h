// The replaceable part of a placed-art block: its placement, pointed at a new EPS file.
#pragma once

class TAB_TEXT;

class AI_PLACED_ART_REPLACE {
 public:
  void setup_tabtxt(const char* id, const TAB_TEXT& table);
};
