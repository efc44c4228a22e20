// The text style of a run: one record per text-style operator, holding its operands in
// template order and printing them back as one line.
#pragma once

#include <string>
#include <string_view>

class Output;

// Font and size. The font name is kept without the two-character prefix ("/_") that the
// template writes before it, since font replacement works on bare names.
class OP_Tf {
 public:
  // Takes the name from the token's third character on; a shorter token gives "".
  void setup(std::string_view token, double v0, double v1, double v2);
  void print(Output& out) const;

  std::string fontname;
  double values[3] = {0, 0, 0};
};

class OP_Tr {
 public:
  void setup(int v) { value = v; }
  void print(Output& out) const;

  int value = 0;
};

class OP_TV {
 public:
  void setup(int v) { value = v; }
  void print(Output& out) const;

  int value = 0;
};

class OP_Ta {
 public:
  void setup(int v) { value = v; }
  void print(Output& out) const;

  int value = 0;
};

class OP_Tt {
 public:
  void setup(int v) { value = v; }
  void print(Output& out) const;

  int value = 0;
};

class OP_Tz {
 public:
  void setup(double v0, double v1) {
    values[0] = v0;
    values[1] = v1;
  }
  void print(Output& out) const;

  double values[2] = {100, 100};
};

class OP_Tl {
 public:
  void setup(double v0, double v1) {
    values[0] = v0;
    values[1] = v1;
  }
  void print(Output& out) const;

  double values[2] = {14.5, 0};
};

class OP_Tk {
 public:
  void setup(int v0, int v1) {
    values[0] = v0;
    values[1] = v1;
  }
  void print(Output& out) const;

  int values[2] = {1, 0};
};

class OP_TK {
 public:
  void setup(int v0, int v1) {
    values[0] = v0;
    values[1] = v1;
  }
  void print(Output& out) const;

  int values[2] = {1, 0};
};

class OP_Ts {
 public:
  void setup(double v) { value = v; }
  void print(Output& out) const;

  double value = 0;
};

// Its first operand is written with the prefix "%_", which print restores.
class OP_Xu {
 public:
  void setup(int v0, int v1, int v2, int v3) {
    values[0] = v0;
    values[1] = v1;
    values[2] = v2;
    values[3] = v3;
  }
  void print(Output& out) const;

  int values[4] = {0, 0, 0, 0};
};

class OP_Tq {
 public:
  void setup(int v) { value = v; }
  void print(Output& out) const;

  int value = 0;
};
