// The template in memory: the PostScript text from "%!PS-Adobe" to the last "%%EOF", with
// embedded documents cut out, cut in place into lines at carriage returns. Every other
// part of the model refers to the text by line index.
#pragma once

#include <memory>
#include <string>
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

  int line_count() const { return static_cast<int>(lines.size()); }
  const char* line(int index) const { return lines[static_cast<size_t>(index)]; }
  const AI_SCRIPT* get_script() const { return script.get(); }
  const AI_PROLOG* get_prolog() const { return prolog.get(); }

 private:
  void eliminate_BeginEndDocument();
  void setup_doc();

  std::string buffer;
  std::vector<char*> lines;
  std::unique_ptr<AI_PROLOG> prolog;
  std::unique_ptr<AI_SCRIPT> script;
};
