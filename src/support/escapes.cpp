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

namespace {

bool octal_escape_at(std::string_view body, size_t i) {
  return i + 3 < body.size() && body[i] == '\\' && is_octal(body[i + 1]) && is_octal(body[i + 2]) &&
         is_octal(body[i + 3]);
}

int hex_value(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

}  // namespace

STRING_STYLE string_style(std::string_view body) {
  bool all_octal = !body.empty();
  bool raw_high = false;
  bool octal_high = false;
  for (size_t i = 0; i < body.size(); ++i) {
    if (octal_escape_at(body, i)) {
      octal_high = octal_high || body[i + 1] >= '2';
      i += 3;
      continue;
    }
    all_octal = false;
    if (body[i] == '\\') {
      ++i;
    } else if (static_cast<unsigned char>(body[i]) >= 0x80) {
      raw_high = true;
    }
  }
  if (all_octal) return STRING_STYLE::octal_all;
  return octal_high && !raw_high ? STRING_STYLE::octal_high : STRING_STYLE::as_is;
}

std::string ps_string_in_style(std::string_view raw, STRING_STYLE style) {
  if (style != STRING_STYLE::octal_all) {
    return ps_string_escape(raw, style == STRING_STYLE::octal_high);
  }
  std::string out;
  out.reserve(raw.size() * 4);
  for (char c : raw) append_octal(out, static_cast<unsigned char>(c));
  return out;
}

std::string ps_hex_decode(std::string_view body) {
  std::string out;
  int high = -1;
  for (char c : body) {
    const int value = hex_value(c);
    if (value < 0) continue;
    if (high < 0) {
      high = value;
    } else {
      out += static_cast<char>(static_cast<unsigned char>(high * 16 + value));
      high = -1;
    }
  }
  if (high >= 0) out += static_cast<char>(static_cast<unsigned char>(high * 16));
  return out;
}

std::string ps_hex_encode(std::string_view raw, bool lower_case) {
  const char* digits = lower_case ? "0123456789abcdef" : "0123456789ABCDEF";
  std::string out;
  out.reserve(raw.size() * 2);
  for (char c : raw) {
    const unsigned char byte = static_cast<unsigned char>(c);
    out += digits[byte >> 4];
    out += digits[byte & 15];
  }
  return out;
}

std::string run_text(std::string_view raw) {
  std::string out;
  out.reserve(raw.size());
  for (char c : raw) {
    switch (c) {
      case '\\':
        out += "\\\\";
        break;
      case '\t':
        out += "\\t";
        break;
      case '\0':
        out += "\\z";
        break;
      default:
        out += c;
    }
  }
  return out;
}

std::string run_bytes(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\' || i + 1 == text.size()) {
      out += text[i];
      continue;
    }
    const char c = text[++i];
    out += c == 't' ? '\t' : c == 'z' ? '\0' : c;
  }
  return out;
}
