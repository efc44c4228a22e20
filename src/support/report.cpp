#include "support/report.h"

namespace {

std::string cell_of(long long row, long long col) {
  return "row " + std::to_string(row) + ", column " + std::to_string(col);
}

}  // namespace

void REPORT::start(bool enabled) {
  on = enabled;
  layer = 0;
  lines.clear();
}

std::string REPORT::placeholder_line(const char* kind, const std::string& placeholder,
                                     const std::string& cell, const std::string& outcome) const {
  return "layer " + std::to_string(layer) + ": " + kind + " " + placeholder + " (" + cell +
         "): " + outcome;
}

void REPORT::add(const char* kind, const std::string& placeholder, long long row, long long col,
                 const std::string& outcome) {
  if (on) lines += placeholder_line(kind, placeholder, cell_of(row, col), outcome) + "\n";
}

void REPORT::undone(PROBLEM::KIND problem, const char* kind, const std::string& placeholder,
                    long long row, long long col, const std::string& outcome) {
  add(kind, placeholder, row, col, outcome);
  if (!collecting) return;
  const std::string where =
      problem == PROBLEM::KIND::no_table ? cell_of(row, col) : table + ", " + cell_of(row, col);
  found.push_back({problem, document, placeholder_line(kind, placeholder, where, outcome)});
}

void REPORT::note(const char* kind, const std::string& subject, const std::string& outcome) {
  if (!on) return;
  lines += "layer " + std::to_string(layer) + ": " + kind + " " + subject + ": " + outcome + "\n";
}

void REPORT::add_line(const std::string& line) {
  if (on) lines += line + "\n";
}

void REPORT::finding(PROBLEM::KIND problem, const std::string& line) {
  add_line(line);
  if (collecting) found.push_back({problem, document, line});
}
