#include "support/escapes.h"

#include <cstdio>

namespace {

void append_octal(std::string& out, unsigned char byte) {
  char escape[5];
  std::snprintf(escape, sizeof escape, "\\%03o", static_cast<unsigned>(byte));
  out += escape;
}

bool is_octal(char c) {
  return c >= '0' && c <= '7';
}

}  // namespace

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
      append_octal(out, byte);
    }
  }
  return out;
}

std::string ps_string_decode(std::string_view body) {
  std::string out;
  out.reserve(body.size());
  for (size_t i = 0; i < body.size(); ++i) {
    if (body[i] != '\\') {
      out += body[i];
      continue;
    }
    if (++i == body.size()) break;  // a lone backslash at the end stands for nothing
    const char c = body[i];
    if (is_octal(c)) {
      unsigned value = 0;
      size_t digits = 0;
      for (; digits < 3 && i < body.size() && is_octal(body[i]); ++digits, ++i) {
        value = value * 8 + static_cast<unsigned>(body[i] - '0');
      }
      --i;
      out += static_cast<char>(static_cast<unsigned char>(value & 0xFF));
      continue;
    }
    switch (c) {
      case 'n':
        out += '\n';
        break;
      case 'r':
        out += '\r';
        break;
      case 't':
        out += '\t';
        break;
      case 'b':
        out += '\b';
        break;
      case 'f':
        out += '\f';
        break;
      case '\r':
        if (i + 1 < body.size() && body[i + 1] == '\n') ++i;
        break;
      case '\n':
        break;
      default:
        out += c;
    }
  }
  return out;
}

std::string ps_string_escape(std::string_view raw, bool octal_high, bool octal_controls) {
  std::string out;
  out.reserve(raw.size());
  for (char c : raw) {
    const unsigned char byte = static_cast<unsigned char>(c);
    if (octal_controls && byte < 0x20 && c != '\r' && c != '\n') {
      append_octal(out, byte);
      continue;
    }
    switch (c) {
      case '\\':
        out += "\\\\";
        break;
      case '(':
        out += "\\(";
        break;
      case ')':
        out += "\\)";
        break;
      case '\r':
        out += "\\r";
        break;
      case '\n':
        out += "\\n";
        break;
      case '\t':
        out += "\\t";
        break;
      case '\b':
        out += "\\b";
        break;
      case '\f':
        out += "\\f";
        break;
      default:
        if (byte < 0x20 || byte == 0x7F || (byte >= 0x80 && octal_high)) {
          append_octal(out, byte);
        } else {
          out += c;
        }
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
