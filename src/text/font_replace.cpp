// Font replacement and the numeral-font encoding of a point text.
#include <string>

#include "support/error.h"
#include "support/escapes.h"
#include "support/patterns.h"
#include "support/regex.h"
#include "support/report.h"
#include "support/settings.h"
#include "support/strings.h"
#include "table/tab_text.h"
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

// The first number of text as written: from its first digit, the digits, commas and
// periods that follow, less those that end a sentence.
std::string_view first_number(std::string_view text) {
  const size_t start = text.find_first_of("0123456789");
  if (start == std::string_view::npos) return {};
  size_t end = text.find_first_not_of("0123456789,.", start);
  if (end == std::string_view::npos) end = text.size();
  std::string_view number = text.substr(start, end - start);
  while (number.back() == ',' || number.back() == '.') number.remove_suffix(1);
  return number;
}

// Whether a number is whole: digits alone, or (when grouping is read) digits grouped in
// thousands by commas.
bool is_whole(std::string_view number, bool grouping) {
  if (number.find_first_not_of("0123456789") == std::string_view::npos) return true;
  if (!grouping || number.find('.') != std::string_view::npos) return false;
  const size_t head = number.find(',');
  if (head == 0 || head > 3) return false;
  for (size_t at = head; at < number.size(); at += 4) {
    if (number[at] != ',' || number.size() - at < 4) return false;
    if (number.substr(at + 1, 3).find(',') != std::string_view::npos) return false;
  }
  return true;
}

std::string without_commas(std::string_view number) {
  std::string digits;
  for (char c : number) {
    if (c != ',') digits += c;
  }
  return digits;
}

}  // namespace

// A placeholder that lies whole inside one run and names a font gives that run the font. In
// a text read by "-keep", only one that has a cell (or goes, with "-rm=y") does: a run
// whose placeholder stays keeps its font, so its own digits are never taken for a number.
void AI_POINT_TEXT::font_replace(const char* pattern, const TAB_TEXT& tab,
                                 const TEXT_REPLACING& with) {
  const REPORT& report = with.report;
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
    const char* cell = tab.get_field(row - 1, col - 1);
    if (decoded && !with.settings.rm && (!cell || !*cell)) continue;
    run.font_name = font;
    run.font_replaced = true;
    if (report.enabled() || report.collects_problems()) report_notes().fonts_set[match] = font;
  }
}

// The first number of each run whose font was set to a numeral font becomes glyph codes,
// written with the string escapes of the template (as bytes, in decoded strings). The
// default output encodes the first run of digits, whatever follows it; "-keep" encodes a
// whole number (grouped in thousands or not) and writes any other as it is, reported. A
// number that is not whole is a problem either way.
void AI_POINT_TEXT::rimba_encode_tx(REPORT& report) {
  for (AI_TxTX& run : TxTX) {
    if (!run.font_replaced || run.number_encoded || !run.has(TEXT_OP::Tf) ||
        !IsRimba(run.font_name.c_str())) {
      continue;
    }
    std::string* str = run.string();
    if (!str) continue;
    const std::string_view number = first_number(*str);
    if (number.empty()) continue;
    if (!is_whole(number, decoded)) {
      const std::string text = "layer " + std::to_string(report.layer_number()) + ": text " +
                               without_tabs(*str) + ": not a whole number, ";
      if (decoded) {
        // Glyph codes of part of it would print a wrong number: it stays in its own font.
        report.finding(PROBLEM::KIND::numeral_cell, text + "written as it is in its own font");
        run.font_replaced = false;
        continue;
      }
      report.finding(PROBLEM::KIND::numeral_cell,
                     text + "only its first digits are encoded in " + run.font_name);
    }
    const std::string digits = decoded ? without_commas(number) : first_digits(*str);
    const std::string codes = rimba_encode(without_leading_zeros(digits));
    const std::string written = decoded ? std::string(number) : digits;
    *str = MY_STRING::replace(*str, written, decoded ? run_text(codes) : tx_encode(codes));
    run.number_encoded = true;
  }
}
