// The replaceable part of a point text: its parsed model, which takes the table cells of
// every text argument in turn and prints the object anew.
#pragma once

class AI_DOCUMENT;
class Output;
class TAB_TEXT;

class AI_TEXT_REPLACE {
 public:
  void setup_tabtxt(const char* id, const TAB_TEXT& table);
  void setup_tabtxt(const TAB_TEXT& table);
  void print_new(Output& out) const;
};
