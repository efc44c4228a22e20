// The "Rimba" numeral fonts: a number set in one of them is written as glyph codes, one
// code per character of the number grouped in thousands, chosen by that character and the
// one after it, and closed by "|".
#pragma once

#include <string>
#include <string_view>

// 11 rows (digits 0-9, then the comma) by 12 columns (the following digit 0-9, a comma,
// the end of the number).
extern const unsigned char rimba_chars[11][12];

// The decimal digits grouped in thousands with commas: 1234567 gives 1,234,567.
std::string spricef(std::string_view digits);
// The glyph codes of a number written in decimal without leading zeros, then "|".
std::string rimba_encode(std::string_view number);
// 1 when name begins with "Rimba" (case matters).
int IsRimba(const char* name);
