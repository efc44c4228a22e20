#include "support/numbers.h"

#include <climits>
#include <cstdlib>

int to_int(const char* text) {
  const char* p = text;
  while (*p == ' ' || (*p >= '\t' && *p <= '\r')) ++p;
  bool negative = *p == '-';
  if (*p == '-' || *p == '+') ++p;
  long long value = 0;
  for (; *p >= '0' && *p <= '9'; ++p) {
    value = value * 10 + (*p - '0');
    if (value > static_cast<long long>(INT_MAX) + 1) {
      value = static_cast<long long>(INT_MAX) + 1;  // saturate: the rest cannot matter
    }
  }
  if (negative) return value > INT_MAX ? INT_MIN : static_cast<int>(-value);
  return value > INT_MAX ? INT_MAX : static_cast<int>(value);
}

double to_double(const char* text) {
  return std::strtod(text, nullptr);
}
