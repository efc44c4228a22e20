#include "textattr/point_attributes.h"

#include "support/numbers.h"
#include "support/output.h"
#include "support/stack.h"

void OP_Tp::setup(double v0, double v1, double v2, double v3, double v4, double v5, double v6) {
  values[0] = v0;
  values[1] = v1;
  values[2] = v2;
  values[3] = v3;
  values[4] = v4;
  values[5] = v5;
  values[6] = v6;
}

void OP_Tp::print(Output& out) const {
  out.reals_line({values[0], values[1], values[2], values[3], values[4], values[5], values[6]},
                 "Tp");
}

void OP_Ap::print(Output& out) const {
  out.integers_line({value}, "Ap");
}

void OP_Ar::print(Output& out) const {
  out.integers_line({value}, "Ar");
}

void AI_ATTRIBUTES::create(TEXT_OP op) {
  if (op == TEXT_OP::Ap) Ap.emplace();
  if (op == TEXT_OP::Ar) Ar.emplace();
}

void AI_ATTRIBUTES::setup(TEXT_OP op, const STACK& stack) {
  if (op == TEXT_OP::Ap) {
    if (!Ap) Ap.emplace();
    Ap->setup(to_int(stack.operand(1)));
  }
  if (op == TEXT_OP::Ar) {
    if (!Ar) Ar.emplace();
    Ar->setup(to_int(stack.operand(1)));
  }
}

void AI_ATTRIBUTES::print(Output& out) const {
  if (Ap) Ap->print(out);
  if (Ar) Ar->print(out);
}

void OP_Tv::print(Output& out) const {
  out.integers_line({value}, "Tv");
}
