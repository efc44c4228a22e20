#include "support/escapes.h"

#include <cstdio>

std::string tx_encode(std::string_view in) {
  std::string out;
  out.reserve(in.size());
  for (char c : in) {
    unsigned char byte = static_cast<unsigned char>(c);
    if (byte == '\r' || byte == '\n') {
      out += "\\r";
    } else if (byte == '\t') {
      out += "\\t";
    } else if (byte >= 0x20 && byte <= 0x7E && byte != '\\') {
      out += c;
    } else {
      char escape[5];
      std::snprintf(escape, sizeof escape, "\\%03o", static_cast<unsigned>(byte));
      out += escape;
    }
  }
  return out;
}

std::string path_decode(std::string_view in) {
  std::string out;
  out.reserve(in.size());
  size_t i = 0;
  while (i < in.size()) {
    if (in[i] != '\\') {
      out += in[i++];
    } else if (i + 1 < in.size() && in[i + 1] == '\\') {
      out += '\\';
      i += 2;
    } else if (i + 3 < in.size()) {
      int value = ((in[i + 1] - '0') * 8 + (in[i + 2] - '0')) * 8 + (in[i + 3] - '0');
      out += static_cast<char>(static_cast<unsigned char>(((value % 256) + 256) % 256));
      i += 4;
    } else {
      out.append(in, i, std::string_view::npos);  // an escape cut short stays as written
      break;
    }
  }
  return out;
}
