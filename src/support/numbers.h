// Numbers read from the template, the tables and EPS files. Each gives the result of the
// C library's atoi/atof wherever those are defined, in the C locale, and a defined result
// everywhere else: an integer beyond the range of int is clamped to INT_MIN or INT_MAX.
#pragma once

int to_int(const char* text);
double to_double(const char* text);
