#include "table/unicode_text.h"

#include <cstdio>

namespace {

bool is_continuation(unsigned char byte) {
  return (byte & 0xC0) == 0x80;
}

bool is_high_surrogate(unsigned unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}

bool is_low_surrogate(unsigned unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

}  // namespace

UNICODE_TEXT::UNICODE_TEXT(std::string_view text) : bytes(text) {
  if (bytes.substr(0, 3) == "\xEF\xBB\xBF") {
    next = 3;
  } else if (bytes.substr(0, 2) == "\xFF\xFE") {
    form = FORM::utf16le;
    next = 2;
  } else if (bytes.substr(0, 2) == "\xFE\xFF") {
    form = FORM::utf16be;
    next = 2;
  }
}

char32_t UNICODE_TEXT::get() {
  size_t length = 0;
  const char32_t c = decode(next, &length);
  if (c == kMalformed) malformed_at = next;
  next += length;
  return c;
}

char32_t UNICODE_TEXT::peek() const {
  size_t length = 0;
  return decode(next, &length);
}

std::string UNICODE_TEXT::problem() const {
  char text[64];
  if (form == FORM::utf8) {
    std::snprintf(text, sizeof text, "malformed UTF-8 (byte 0x%02X)",
                  static_cast<unsigned char>(bytes[malformed_at]));
  } else if (malformed_at + 1 >= bytes.size()) {
    std::snprintf(text, sizeof text, "malformed UTF-16 (odd number of bytes)");
  } else {
    std::snprintf(text, sizeof text, "malformed UTF-16 (unpaired surrogate 0x%04X)",
                  unit_at(malformed_at));
  }
  return text;
}

char32_t UNICODE_TEXT::decode(size_t at, size_t* length) const {
  *length = 0;
  if (at >= bytes.size()) return kEnd;
  return form == FORM::utf8 ? decode_utf8(bytes, at, length) : decode_utf16(at, length);
}

// A malformed sequence is passed over as far as its first byte.
char32_t decode_utf8(std::string_view bytes, size_t at, size_t* length) {
  *length = 0;
  if (at >= bytes.size()) return UNICODE_TEXT::kEnd;
  const unsigned char lead = static_cast<unsigned char>(bytes[at]);
  *length = 1;
  if (lead < 0x80) return lead;
  size_t more = 0;
  char32_t c = 0;
  unsigned char low = 0x80;  // the bounds of the second byte, narrower after some leads
  unsigned char high = 0xBF;
  if (lead >= 0xC2 && lead <= 0xDF) {
    more = 1;
    c = lead & 0x1F;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    more = 2;
    c = lead & 0x0F;
    if (lead == 0xE0) low = 0xA0;
    if (lead == 0xED) high = 0x9F;
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    more = 3;
    c = lead & 0x07;
    if (lead == 0xF0) low = 0x90;
    if (lead == 0xF4) high = 0x8F;
  } else {
    return UNICODE_TEXT::kMalformed;
  }
  if (at + more >= bytes.size()) return UNICODE_TEXT::kMalformed;
  for (size_t i = 1; i <= more; ++i) {
    const unsigned char byte = static_cast<unsigned char>(bytes[at + i]);
    if (!is_continuation(byte) || (i == 1 && (byte < low || byte > high)))
      return UNICODE_TEXT::kMalformed;
    c = (c << 6) | (byte & 0x3F);
  }
  *length = more + 1;
  return c;
}

char32_t UNICODE_TEXT::decode_utf16(size_t at, size_t* length) const {
  *length = 2;
  if (at + 1 >= bytes.size()) return kMalformed;
  const unsigned unit = unit_at(at);
  if (is_low_surrogate(unit)) return kMalformed;
  if (!is_high_surrogate(unit)) return unit;
  if (at + 3 >= bytes.size() || !is_low_surrogate(unit_at(at + 2))) return kMalformed;
  *length = 4;
  return 0x10000 + ((unit - 0xD800) << 10) + (unit_at(at + 2) - 0xDC00);
}

unsigned UNICODE_TEXT::unit_at(size_t at) const {
  const unsigned first = static_cast<unsigned char>(bytes[at]);
  const unsigned second = static_cast<unsigned char>(bytes[at + 1]);
  return form == FORM::utf16le ? first | second << 8 : first << 8 | second;
}

void append_utf8(char32_t c, std::string& out) {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | (c >> 6));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    out += static_cast<char>(0xE0 | (c >> 12));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (c >> 18));
    out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}
