// The template in memory: the PostScript text from "%!PS-Adobe" to the last "%%EOF", with
// embedded documents cut out, cut into lines at carriage returns; or, as "-keep" reads it,
// the text whole, cut at every line end. The bytes are never changed: lines are views into
// them. Every object of the model refers to the text by line index, through the template.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "support/file_io.h"
#include "template/lines.h"

class Output;

class TEMPLATE {
 public:
  static constexpr int kMaxLines = LINE_INDEX::kMaxLines;

  // Reads the template file whole ("ai file open error\n" and the like on failure).
  static FileBytes read_file(const char* file_name);

  // Cuts embedded documents out of the template's bytes and cuts the rest into lines.
  explicit TEMPLATE(FileBytes file);
  explicit TEMPLATE(std::string in_memory) : TEMPLATE(FileBytes(std::move(in_memory))) {}
  // The template as "-keep" reads it: nothing is cut out, lines end at CR LF, CR or LF and
  // keep their own ends (see LINE_INDEX::cut_kept).
  struct KEEP_BYTES {};
  TEMPLATE(FileBytes file, KEEP_BYTES);
  TEMPLATE(const TEMPLATE&) = delete;
  TEMPLATE& operator=(const TEMPLATE&) = delete;
  ~TEMPLATE();

  // Whether the template was read for "-keep": its objects are then read so that their
  // bytes can be patched where they stand.
  bool keeps_bytes() const { return lines.keeps_line_ends(); }
  int line_count() const { return lines.line_count(); }
  std::string_view line(int index) const { return lines.line(index); }
  template <typename Visit>
  void each_line(int first, int last, Visit visit) const {
    lines.each_line(first, last, visit);
  }
  std::string_view bytes_of_lines(int first, int last) const {
    return lines.bytes_of_lines(first, last);
  }
  // Writes each line of [first, last] followed by a carriage return (after a "-keep" cut,
  // by its own line end).
  void print_lines(int first, int last, Output& out) const;
  // For a batch, which prints the same template many times: from now on each range of lines
  // is found (and converted, CR LF to CR) once, and written by reference after that. Ranges
  // that print as read need no copies.
  void remember_printed_lines();

  // Index of the first line in [from, to] that begins with comment (or equals it, when
  // whole_line is set); -1 when there is none. The comment begins with '%'.
  int find_comment(int from, int to, std::string_view comment, bool whole_line = false) const;
  template <typename Test>
  int find_ai5_line(int from, int to, Test test) const {
    return lines.find_ai5_line(from, to, test);
  }
  template <typename Test>
  int find_comment_line(int from, int to, std::string_view head, Test test) const {
    return lines.find_comment_line(from, to, head, test);
  }
  int find_text_line(int from, int to) const { return lines.find_text_line(from, to); }
  // How many lines in [from, to] find_text_line can find: at least the text objects there,
  // as a "To" line within a text counts too.
  size_t text_line_count(int from, int to) const { return lines.text_line_count(from, to); }
  int find_text_end_line(int from, int to) const { return lines.find_text_end_line(from, to); }

  // The template file's bytes as read, embedded documents included.
  std::string_view source() const { return cuts.empty() ? text : source_bytes.view(); }
  // Where a byte of the template's text stands in source(). A place where an embedded
  // document was cut out is taken after it when after_cut is set, before it otherwise.
  size_t source_offset(const char* in_text, bool after_cut) const;
  // The embedded documents that were cut out, as ranges of source().
  struct CUT {
    size_t text_at;  // where the cut was made, in the text
    size_t from;
    size_t to;
  };
  const std::vector<CUT>& cut_out() const { return cuts; }

 private:
  void eliminate_BeginEndDocument();

  FileBytes bytes;
  std::string_view text;                  // the bytes, with any embedded documents cut out
  FileBytes source_bytes{std::string()};  // the file as read, once something was cut out
  std::vector<CUT> cuts;
  LINE_INDEX lines;
  // The printed ranges by first line: their last line, and their bytes in the text or in a
  // converted copy.
  struct PRINTED_RANGE {
    int last;
    size_t from;
    size_t length;
    std::unique_ptr<std::string> converted;
  };
  PRINTED_RANGE printed_range(int first, int last) const;
  using PRINTED = std::unordered_map<int, PRINTED_RANGE>;
  std::unique_ptr<PRINTED> printed;
};
