#include "textattr/text_style.h"

#include "support/output.h"

void OP_Tf::setup(std::string_view token, double v0, double v1, double v2) {
  fontname = token.size() < 2 ? std::string() : std::string(token.substr(2));
  values[0] = v0;
  values[1] = v1;
  values[2] = v2;
}

void OP_Tf::print(Output& out) const {
  out.write("/_");
  out.write(fontname);
  out.write(" ");
  out.reals_line({values[0], values[1], values[2]}, "Tf");
}

void OP_Tr::print(Output& out) const {
  out.integers_line({value}, "Tr");
}

void OP_TV::print(Output& out) const {
  out.integers_line({value}, "TV");
}

void OP_Ta::print(Output& out) const {
  out.integers_line({value}, "Ta");
}

void OP_Tt::print(Output& out) const {
  out.integers_line({value}, "Tt");
}

void OP_Tz::print(Output& out) const {
  out.reals_line({values[0], values[1]}, "Tz");
}

void OP_Tl::print(Output& out) const {
  out.reals_line({values[0], values[1]}, "Tl");
}

void OP_Tk::print(Output& out) const {
  out.integers_line({values[0], values[1]}, "Tk");
}

void OP_TK::print(Output& out) const {
  out.integers_line({values[0], values[1]}, "TK");
}

void OP_Ts::print(Output& out) const {
  out.reals_line({value}, "Ts");
}

void OP_Xu::print(Output& out) const {
  out.write("%_");
  out.integers_line({values[0], values[1], values[2], values[3]}, "Xu");
}

void OP_Tq::print(Output& out) const {
  out.integers_line({value}, "Tq");
}
