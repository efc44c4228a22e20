#include "placed/op_bquote.h"

#include <utility>

#include "support/output.h"

OP_BQUOTE::OP_BQUOTE() : matrix{1, 0, 0, 1, 0, 0}, bbox{0, 0, 300, 300} {}

void OP_BQUOTE::setup(double a, double b, double c, double d, double tx, double ty, double llx,
                      double lly, double urx, double ury, std::string file) {
  matrix[0] = a;
  matrix[1] = b;
  matrix[2] = c;
  matrix[3] = d;
  matrix[4] = tx;
  matrix[5] = ty;
  bbox[0] = llx;
  bbox[1] = lly;
  bbox[2] = urx;
  bbox[3] = ury;
  file_string = std::move(file);
}

void OP_BQUOTE::print(Output& out) const {
  out.printf("[%f %f %f %f %f %f] %f %f %f %f%s", matrix[0], matrix[1], matrix[2], matrix[3],
             matrix[4], matrix[5], bbox[0], bbox[1], bbox[2], bbox[3], "\r");
  out.write(file_string);
  out.write("`\r");
}
