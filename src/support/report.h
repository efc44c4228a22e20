// The placeholder report of "-report": after the run, one line per placeholder of the
// template that ormel looked at, saying which cell it named and what became of it.
#pragma once

#include <string>

class REPORT {
 public:
  // Empties the report and turns it on or off for a new run.
  void start(bool enabled);
  bool enabled() const { return on; }
  // The layer (counted from 1) whose objects the next lines speak of.
  void set_layer(int number) { layer = number; }
  // "layer L: KIND PLACEHOLDER (row R, column C): OUTCOME".
  void add(const char* kind, const std::string& placeholder, long long row, long long col,
           const std::string& outcome);
  // "layer L: KIND SUBJECT: OUTCOME", for what is no placeholder's own outcome.
  void note(const char* kind, const std::string& subject, const std::string& outcome);
  // Any other line, such as a finding about a table's cell.
  void add_line(const std::string& line);
  const std::string& text() const { return lines; }

 private:
  bool on = false;
  int layer = 0;
  std::string lines;
};
