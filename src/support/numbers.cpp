#include "support/numbers.h"

#include <climits>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

bool is_space(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

// A plain decimal ("-12.5", "1.000000") whose digits fit in 53 bits and whose fraction has
// at most 22 digits is one exact integer divided by an exact power of ten: a single correctly
// rounded division, which is what strtod gives too. Anything else (exponents, hex, inf, more
// digits) is left to strtod.
bool plain_decimal(std::string_view text, double* value) {
  static constexpr double kPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                       1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                       1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
  const char* p = text.data();
  const char* const end = p + text.size();
  auto at = [&p, end](char c) { return p < end && *p == c; };
  auto digit = [&p, end] { return p < end && is_digit(*p); };
  while (p < end && is_space(*p)) ++p;
  const bool negative = at('-');
  if (at('-') || at('+')) ++p;
  uint64_t mantissa = 0;
  int digits = 0;
  int decimals = 0;
  for (; digit(); ++p, ++digits) mantissa = mantissa * 10 + static_cast<uint64_t>(*p - '0');
  if (at('.')) {
    for (++p; digit(); ++p, ++digits, ++decimals) {
      mantissa = mantissa * 10 + static_cast<uint64_t>(*p - '0');
    }
  }
  if (digits == 0 || digits > 19 || decimals > 22 || mantissa > (uint64_t{1} << 53)) return false;
  if (at('e') || at('E') || at('x') || at('X')) return false;
  const double magnitude = static_cast<double>(mantissa) / kPowers[decimals];
  *value = negative ? -magnitude : magnitude;
  return true;
}

// strtod reads a copy that ends with a NUL, so that it never looks past the word.
double by_strtod(std::string_view text) {
  char small[64];
  if (text.size() < sizeof small) {
    text.copy(small, text.size());
    small[text.size()] = '\0';
    return std::strtod(small, nullptr);
  }
  return std::strtod(std::string(text).c_str(), nullptr);
}

}  // namespace

int to_int(std::string_view text) {
  const char* p = text.data();
  const char* const end = p + text.size();
  while (p < end && is_space(*p)) ++p;
  const bool negative = p < end && *p == '-';
  if (p < end && (*p == '-' || *p == '+')) ++p;
  long long value = 0;
  for (; p < end && is_digit(*p); ++p) {
    value = value * 10 + (*p - '0');
    if (value > static_cast<long long>(INT_MAX) + 1) {
      value = static_cast<long long>(INT_MAX) + 1;  // saturate: the rest cannot matter
    }
  }
  if (negative) return value > INT_MAX ? INT_MIN : static_cast<int>(-value);
  return value > INT_MAX ? INT_MAX : static_cast<int>(value);
}

double to_double(std::string_view text) {
  // A lone digit, as most placements and style operands are ("1 0 0 1 ... Tp", "0 Tr").
  if (text.size() == 1 && is_digit(text[0])) return text[0] - '0';
  double value;
  return plain_decimal(text, &value) ? value : by_strtod(text);
}

bool read_decimal(std::string_view text, long long max, long long* value) {
  if (text.empty() || text.size() > 18) return false;
  long long read = 0;
  for (char c : text) {
    if (c < '0' || c > '9') return false;
    read = read * 10 + (c - '0');
  }
  if (read > max) return false;
  *value = read;
  return true;
}
