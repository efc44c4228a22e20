#include "support/report.h"

void REPORT::start(bool enabled) {
  on = enabled;
  layer = 0;
  lines.clear();
}

void REPORT::add(const char* kind, const std::string& placeholder, long long row, long long col,
                 const std::string& outcome) {
  if (!on) return;
  lines += "layer " + std::to_string(layer) + ": " + kind + " " + placeholder + " (row " +
           std::to_string(row) + ", column " + std::to_string(col) + "): " + outcome + "\n";
}

void REPORT::note(const char* kind, const std::string& subject, const std::string& outcome) {
  if (!on) return;
  lines += "layer " + std::to_string(layer) + ": " + kind + " " + subject + ": " + outcome + "\n";
}

void REPORT::add_line(const std::string& line) {
  if (on) lines += line + "\n";
}
