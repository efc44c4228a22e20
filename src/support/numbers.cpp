#include "support/numbers.h"

#include <climits>
#include <cstdint>
#include <cstdlib>

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
bool plain_decimal(const char* p, double* value) {
  static constexpr double kPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                       1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                       1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
  while (is_space(*p)) ++p;
  const bool negative = *p == '-';
  if (*p == '-' || *p == '+') ++p;
  uint64_t mantissa = 0;
  int digits = 0;
  int decimals = 0;
  for (; is_digit(*p); ++p, ++digits) mantissa = mantissa * 10 + static_cast<uint64_t>(*p - '0');
  if (*p == '.') {
    for (++p; is_digit(*p); ++p, ++digits, ++decimals) {
      mantissa = mantissa * 10 + static_cast<uint64_t>(*p - '0');
    }
  }
  if (digits == 0 || digits > 19 || decimals > 22 || mantissa > (uint64_t{1} << 53)) return false;
  if (*p == 'e' || *p == 'E' || *p == 'x' || *p == 'X') return false;
  const double magnitude = static_cast<double>(mantissa) / kPowers[decimals];
  *value = negative ? -magnitude : magnitude;
  return true;
}

}  // namespace

int to_int(const char* text) {
  const char* p = text;
  while (is_space(*p)) ++p;
  bool negative = *p == '-';
  if (*p == '-' || *p == '+') ++p;
  long long value = 0;
  for (; is_digit(*p); ++p) {
    value = value * 10 + (*p - '0');
    if (value > static_cast<long long>(INT_MAX) + 1) {
      value = static_cast<long long>(INT_MAX) + 1;  // saturate: the rest cannot matter
    }
  }
  if (negative) return value > INT_MAX ? INT_MIN : static_cast<int>(-value);
  return value > INT_MAX ? INT_MAX : static_cast<int>(value);
}

double to_double(const char* text) {
  double value;
  if (plain_decimal(text, &value)) return value;
  return std::strtod(text, nullptr);
}
