#include "textattr/paint_style.h"

#include "support/output.h"

void OP_k::print(Output& out) const {
  out.printf("%f %f %f %f k%s", cyan, magenta, yellow, black, "\r");
}

void OP_g::print(Output& out) const {
  out.printf("%f g%s", gray, "\r");
}

void OP_K::print(Output& out) const {
  out.printf("%f %f %f %f K%s", cyan, magenta, yellow, black, "\r");
}

void OP_G::print(Output& out) const {
  out.printf("%f G%s", gray, "\r");
}
