// What a run did with each placeholder, and what it left undone. The lines of "-report":
// after each document, one line per placeholder of the template that ormel looked at,
// saying which cell it named and what became of it. The problems: every placeholder or
// frame a document was left without, and every finding about a table or the template,
// collected while the run works and judged at its end (a strict run refuses to write, a
// batch says what it left undone and ends with status 3).
#pragma once

#include <string>
#include <vector>

struct PROBLEM {
  enum class KIND {
    no_cell,
    no_table,
    no_art,
    print_check,
    table_finding,
    numeral_cell,
    not_copied
  };
  KIND kind;
  long long document;  // from 1; 0 for what the tables and the template hold
  std::string text;    // the report's line for it
};

class REPORT {
 public:
  // Empties the lines and turns them on or off for a new document.
  void start(bool enabled);
  bool enabled() const { return on; }
  // Whether problems are collected, for the whole run.
  void collect_problems(bool collect) { collecting = collect; }
  bool collects_problems() const { return collecting; }
  // The layer (counted from 1), the document (from 1) and the table file whose cells the
  // next lines and problems speak of.
  void set_layer(int number) { layer = number; }
  void set_document(long long number) { document = number; }
  void set_table(const std::string& file) { table = file; }
  int layer_number() const { return layer; }

  // "layer L: KIND PLACEHOLDER (row R, column C): OUTCOME".
  void add(const char* kind, const std::string& placeholder, long long row, long long col,
           const std::string& outcome);
  // The same line for a placeholder or frame left without its cell, and a problem that
  // names the table too.
  void undone(PROBLEM::KIND problem, const char* kind, const std::string& placeholder,
              long long row, long long col, const std::string& outcome);
  // "layer L: KIND SUBJECT: OUTCOME", for what is no placeholder's own outcome.
  void note(const char* kind, const std::string& subject, const std::string& outcome);
  // Any other line, such as a finding about a table's cell.
  void add_line(const std::string& line);
  // A line that is also a problem.
  void finding(PROBLEM::KIND problem, const std::string& line);

  const std::string& text() const { return lines; }
  const std::vector<PROBLEM>& problems() const { return found; }

 private:
  std::string placeholder_line(const char* kind, const std::string& placeholder,
                               const std::string& cell, const std::string& outcome) const;

  bool on = false;
  bool collecting = false;
  int layer = 0;
  long long document = 0;
  std::string table;
  std::string lines;
  std::vector<PROBLEM> found;
};
