// Numbers read from the template, the tables and EPS files. Each gives the result of the
// C library's atoi/atof wherever those are defined, in the C locale, and a defined result
// everywhere else: an integer beyond the range of int is clamped to INT_MIN or INT_MAX. A
// number is read from a word's characters alone, as if the word ended with a NUL.
#pragma once

#include <string_view>

int to_int(std::string_view text);
double to_double(std::string_view text);
// A whole number written in decimal digits alone (at most 18 of them) and at most max.
bool read_decimal(std::string_view text, long long max, long long* value);
