// The operators of a point text that apply to the object as a whole rather than to one run:
// its placement (Tp), Tv, and the attributes Ap and Ar.
#pragma once

#include <optional>

#include "textattr/text_operator.h"

class Output;
class STACK;

// Placement of the text; a point text that has no Tp prints the identity followed by 0.
class OP_Tp {
 public:
  void setup(double v0, double v1, double v2, double v3, double v4, double v5, double v6);
  void print(Output& out) const;

  double values[7] = {1, 0, 0, 1, 0, 0, 0};
};

class OP_Ap {
 public:
  void setup(int v) { value = v; }
  void print(Output& out) const;

  int value = 0;
};

class OP_Ar {
 public:
  void setup(int v) { value = v; }
  void print(Output& out) const;

  int value = 800;
};

class AI_ATTRIBUTES {
 public:
  // For Ap or Ar, makes a new record in place of any held; other operators do nothing.
  void create(TEXT_OP op);
  // For Ap or Ar, fills the record from the operand below op, the newest word of stack
  // (making the record if create was not called); other operators do nothing.
  void setup(TEXT_OP op, const STACK& stack);
  // Ap then Ar, each only if read.
  void print(Output& out) const;

  std::optional<OP_Ap> Ap;
  std::optional<OP_Ar> Ar;
};

class OP_Tv {
 public:
  void setup(int v) { value = v; }
  void print(Output& out) const;

  int value = 0;
};
