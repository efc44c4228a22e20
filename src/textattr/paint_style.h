// The paint style of a text run: fill (k, g) and stroke (K, G) colours, each written back
// with its operands in template order.
#pragma once

class Output;

// Fill colour in CMYK.
class OP_k {
 public:
  void setup(double c, double m, double y, double b) {
    cyan = c;
    magenta = m;
    yellow = y;
    black = b;
  }
  void print(Output& out) const;

  double cyan = 0, magenta = 0, yellow = 0, black = 1;
};

// Fill gray.
class OP_g {
 public:
  void setup(double level) { gray = level; }
  void print(Output& out) const;

  double gray = 1;
};

// Stroke colour in CMYK.
class OP_K {
 public:
  void setup(double c, double m, double y, double b) {
    cyan = c;
    magenta = m;
    yellow = y;
    black = b;
  }
  void print(Output& out) const;

  double cyan = 0, magenta = 0, yellow = 0, black = 1;
};

// Stroke gray.
class OP_G {
 public:
  void setup(double level) { gray = level; }
  void print(Output& out) const;

  double gray = 1;
};
