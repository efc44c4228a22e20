#include "textattr/text_style.h"

#include "support/output.h"

void OP_Tf::setup(std::string_view token, double v0, double v1, double v2) {
  fontname = token.size() < 2 ? std::string() : std::string(token.substr(2));
  values[0] = v0;
  values[1] = v1;
  values[2] = v2;
}

void OP_Tf::print(Output& out) const {
  out.printf("/_%s %f %f %f Tf%s", fontname.c_str(), values[0], values[1], values[2], "\r");
}

void OP_Tr::print(Output& out) const {
  out.printf("%d Tr%s", value, "\r");
}

void OP_TV::print(Output& out) const {
  out.printf("%d TV%s", value, "\r");
}

void OP_Ta::print(Output& out) const {
  out.printf("%d Ta%s", value, "\r");
}

void OP_Tt::print(Output& out) const {
  out.printf("%d Tt%s", value, "\r");
}

void OP_Tz::print(Output& out) const {
  out.printf("%f %f Tz%s", values[0], values[1], "\r");
}

void OP_Tl::print(Output& out) const {
  out.printf("%f %f Tl%s", values[0], values[1], "\r");
}

void OP_Tk::print(Output& out) const {
  out.printf("%d %d Tk%s", values[0], values[1], "\r");
}

void OP_TK::print(Output& out) const {
  out.printf("%d %d TK%s", values[0], values[1], "\r");
}

void OP_Ts::print(Output& out) const {
  out.printf("%f Ts%s", value, "\r");
}

void OP_Xu::print(Output& out) const {
  out.printf("%%_%d %d %d %d Xu%s", values[0], values[1], values[2], values[3], "\r");
}

void OP_Tq::print(Output& out) const {
  out.printf("%d Tq%s", value, "\r");
}
