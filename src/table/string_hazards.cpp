#include "table/string_hazards.h"

#include "support/report.h"
#include "table/tab_text.h"

namespace {

// Whether text holds a character of two to four bytes as UTF-8 writes it.
bool holds_utf8(std::string_view text) {
  for (size_t i = 0; i < text.size(); ++i) {
    const auto lead = static_cast<unsigned char>(text[i]);
    const size_t length = lead >= 0xF0 && lead < 0xF5 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC2 ? 2 : 0;
    if (lead >= 0xF5 || length == 0 || i + length > text.size()) continue;
    size_t follow = 1;
    while (follow < length && (static_cast<unsigned char>(text[i + follow]) & 0xC0) == 0x80) {
      ++follow;
    }
    if (follow == length) return true;
  }
  return false;
}

}  // namespace

std::vector<std::string> string_hazards(std::string_view cell) {
  int open = 0;
  bool closes_early = false;
  bool escaping = false;
  for (char c : cell) {
    if (escaping) {
      escaping = false;
    } else if (c == '\\') {
      escaping = true;
    } else if (c == '(') {
      ++open;
    } else if (c == ')') {
      if (open == 0) closes_early = true;
      if (open > 0) --open;
    }
  }
  std::vector<std::string> found;
  if (closes_early) found.push_back("\")\" without \"(\" ends the string early");
  if (open > 0) found.push_back("\"(\" without \")\" leaves the string open");
  if (escaping) found.push_back("a trailing backslash escapes the end of the string");
  if (!cell.empty() && cell.back() == '\r') {
    found.push_back("ends in a carriage return");
  } else if (cell.find('\r') != std::string_view::npos) {
    found.push_back("holds a carriage return");
  }
  if (cell.substr(0, 3) == "\xEF\xBB\xBF") {
    found.push_back("begins with a byte-order mark; -table=tsv reads it");
  } else if (holds_utf8(cell)) {
    found.push_back("holds UTF-8, written as its bytes; -table=tsv or -table=csv converts it");
  }
  return found;
}

void report_string_hazards(const std::string& file, const TAB_TEXT& table, REPORT& report) {
  if (table.cut_at_nul()) {
    report.finding(PROBLEM::KIND::table_finding,
                   file + ": holds a NUL byte; the rows from there on are not read");
  }
  for (long long row = 0; row < table.rec_count(); ++row) {
    for (long long col = 0; const char* cell = table.get_field(row, col); ++col) {
      for (const std::string& finding : string_hazards(cell)) {
        report.finding(PROBLEM::KIND::table_finding, file + ": row " + std::to_string(row + 1) +
                                                         ", column " + std::to_string(col + 1) +
                                                         ": " + finding);
      }
    }
  }
}
