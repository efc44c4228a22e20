// Font replacement and the numeral-font encoding of a point text.
#include <string>

#include "support/error.h"
#include "support/escapes.h"
#include "support/patterns.h"
#include "support/regex.h"
#include "support/report.h"
#include "support/strings.h"
#include "text/point_text.h"
#include "text/rimba.h"

namespace {

// The number a digit run stands for, written without its leading zeros.
std::string without_leading_zeros(const std::string& digits) {
  size_t first = digits.find_first_not_of('0');
  return first == std::string::npos ? "0" : digits.substr(first);
}

// The first run of decimal digits in text, or the empty text.
std::string first_digits(const std::string& text) {
  size_t at = 0;
  return std::string(MY_STRING::next_digits(text, &at));
}

}  // namespace

// A placeholder that lies whole inside one run and names a font gives that run the font.
void AI_POINT_TEXT::font_replace(const char* pattern, const REPORT& report) {
  MY_REGEX regex;
  if (!regex.compile(pattern)) {
    fail("%sAI_POINT_TEXT:font_replace( char * ):regex compile error\n",
         regex.error_text().c_str());
  }
  std::string match;
  std::string font;
  for (AI_TxTX& run : TxTX) {
    const std::string* str = run.string();
    if (!str) continue;
    regex.init_offset(str->c_str());
    if (!regex.match_next(match)) continue;
    long long row = 0;
    long long col = 0;
    rowcol_font(match, &row, &col, &font);
    if (font.empty() || !run.has(TEXT_OP::Tf)) continue;
    run.font_name = font;
    run.font_replaced = true;
    if (report.enabled()) report_notes().fonts_set[match] = font;
  }
}

// The first number of each run whose font was set to a numeral font becomes glyph codes,
// written with the string escapes of the template (as bytes, in decoded strings).
void AI_POINT_TEXT::rimba_encode_tx() {
  for (AI_TxTX& run : TxTX) {
    if (!run.font_replaced || run.number_encoded || !run.has(TEXT_OP::Tf) ||
        !IsRimba(run.font_name.c_str())) {
      continue;
    }
    std::string* str = run.string();
    if (!str) continue;
    const std::string digits = first_digits(*str);
    if (digits.empty()) continue;
    const std::string codes = rimba_encode(without_leading_zeros(digits));
    *str = MY_STRING::replace(*str, digits, decoded ? run_text(codes) : tx_encode(codes));
    run.number_encoded = true;
  }
}
