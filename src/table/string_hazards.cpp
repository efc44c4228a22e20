#include "table/string_hazards.h"

#include "support/report.h"
#include "table/tab_text.h"

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
  return found;
}

void report_string_hazards(const std::string& file, const TAB_TEXT& table, REPORT& report) {
  for (long long row = 0; row < table.rec_count(); ++row) {
    for (long long col = 0; const char* cell = table.get_field(row, col); ++col) {
      for (const std::string& finding : string_hazards(cell)) {
        report.add_line(file + ": row " + std::to_string(row + 1) + ", column " +
                        std::to_string(col + 1) + ": " + finding);
      }
    }
  }
}
