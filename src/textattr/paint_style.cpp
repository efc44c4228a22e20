#include "textattr/paint_style.h"

#include "support/output.h"

void OP_k::print(Output& out) const {
  out.reals_line({cyan, magenta, yellow, black}, "k");
}

void OP_g::print(Output& out) const {
  out.reals_line({gray}, "g");
}

void OP_K::print(Output& out) const {
  out.reals_line({cyan, magenta, yellow, black}, "K");
}

void OP_G::print(Output& out) const {
  out.reals_line({gray}, "G");
}
