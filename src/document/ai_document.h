// The template in memory: the PostScript text from "%!PS-Adobe" to the last "%%EOF", with
// embedded documents cut out, cut in place into lines at carriage returns. Every other
// part of the model refers to the text by line index.
#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "document/sections.h"

class Output;
class TAB_TEXT;

// A pointer to the first place in text[0, length) where pattern stands, searching forward
// (direction 0) or backward (1); nullptr when there is none or the direction is neither.
const char* strpos(const char* text, long long length, const char* pattern, int direction);

class AI_DOCUMENT {
 public:
  static constexpr int kMaxLines = 1048576;

  // Reads the template file whole ("ai file open error\n" and the like on failure).
  static std::string read_file(const char* file_name);

  // Cuts embedded documents out of the template's bytes and cuts the rest into lines.
  explicit AI_DOCUMENT(std::string bytes);
  AI_DOCUMENT(const AI_DOCUMENT&) = delete;
  AI_DOCUMENT& operator=(const AI_DOCUMENT&) = delete;
  ~AI_DOCUMENT();

  // Builds the section tree: prolog, then script with its setup, layers and trailers.
  void analyze_doc();
  // Writes everything but the closing "%%EOF" line.
  void print_new(Output& out) const;

  void setup_replace_text(const char* id, const TAB_TEXT& table);
  void setup_replace_text(const TAB_TEXT& table);
  void setup_replace_placed_art(const char* id, const TAB_TEXT& table);
  // Adds to the run's report every placeholder that no table argument reached.
  void report_unreplaced() const { script->report_unreplaced(); }

  int line_count() const { return static_cast<int>(starts.size()) - 1; }
  // A line without its line end, up to its first NUL byte if it holds one.
  const char* line(int index) const { return starts[static_cast<size_t>(index)]; }
  std::string_view line_view(int index) const;
  // The first line in [from, to] whose bytes hold a '%', that begins with head (at most two
  // characters; empty for any line) and whose text passes test; -1 when there is none.
  // Comments and placed-art markers hold a '%' and most lines of a large document do not,
  // so searches for them look at these lines only, and at their text only when it can match.
  template <typename Test>
  int find_percent_line(int from, int to, std::string_view head, Test test) const {
    auto it =
        std::lower_bound(percent_lines.begin(), percent_lines.end(), from,
                         [](const PercentLine& line, int index) { return line.index < index; });
    for (; it != percent_lines.end() && it->index <= to; ++it) {
      if (it->begins_with(head) && test(line(it->index))) return it->index;
    }
    return -1;
  }

  const AI_SCRIPT* get_script() const { return script.get(); }
  const AI_PROLOG* get_prolog() const { return prolog.get(); }

 private:
  void eliminate_BeginEndDocument();
  void setup_doc();
  void add_line(const char* start, bool holds_percent, bool holds_nul);

  std::string buffer;
  // Where each line starts, then where the line after the last would start: a line's length
  // follows from the next start, so 1,048,576 lines cost 8 MB.
  std::vector<const char*> starts;
  std::vector<int> nul_lines;  // ascending; rare
  // A line that holds a '%', with its first two characters ('\0' past its end).
  struct PercentLine {
    int index;
    char head[2];
    bool begins_with(std::string_view text) const {
      return text.empty() || (text[0] == head[0] && (text.size() == 1 || text[1] == head[1]));
    }
  };
  std::vector<PercentLine> percent_lines;  // ascending
  std::unique_ptr<AI_PROLOG> prolog;
  std::unique_ptr<AI_SCRIPT> script;
};
