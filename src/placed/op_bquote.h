// The record of the placed-art operator, the backquote: the placement's matrix, the
// bounding box of the placed file and the file's name as a PostScript string word.
#pragma once

#include <string>

class Output;

class OP_BQUOTE {
 public:
  // A placement that has not been read yet: the identity matrix and a 300-point box.
  OP_BQUOTE();

  void setup(double a, double b, double c, double d, double tx, double ty, double llx, double lly,
             double urx, double ury, std::string file);
  // The placement line and the file line, each ended by "\r".
  void print(Output& out) const;

  double matrix[6];         // a, b, c, d, tx, ty
  double bbox[4];           // llx, lly, urx, ury, in the placed file's own coordinates
  std::string file_string;  // parentheses included: "(Disk:Art:TX-1-2.eps)"
};
