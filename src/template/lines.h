// The line index of a template's text: where each line starts, cut in one pass, with the few
// lines that structure searches look for (comment lines, the starts and ends of text
// objects, lines holding a NUL) kept aside. The text is never changed: lines are views into
// it, and it must outlive the index.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

class Output;

// A pointer to the first place in text[0, length) where pattern stands, searching forward
// (direction 0) or backward (1); nullptr when there is none or the direction is neither.
const char* strpos(const char* text, long long length, const char* pattern, int direction);

// Where each line of a text starts, 4 bytes a line: offsets from the text's beginning, with
// the lines from which on another 4 GiB is to be added kept aside (none below 4 GiB).
class LineStarts {
 public:
  void reset(size_t expected_lines);
  // count offsets, ascending and not below the last one pushed.
  void push(const size_t* offsets, size_t count);
  size_t operator[](size_t index) const {
    size_t high = 0;
    if (!steps.empty()) {
      high =
          static_cast<size_t>(std::upper_bound(steps.begin(), steps.end(), index) - steps.begin());
    }
    return (high << 32) + low[index];
  }
  size_t size() const { return low.size(); }
  bool empty() const { return low.empty(); }

 private:
  std::vector<uint32_t> low;
  std::vector<size_t> steps;  // ascending line indexes, one for each 4 GiB
};

class LINE_INDEX {
 public:
  static constexpr int kMaxLines = 1048576;

  // Cuts text from "%!PS-Adobe" to the CR after the last "%%EOF" into lines at CRs (a LF
  // right after a CR belongs to the line end); a line's text ends at its CR or its first
  // NUL. Fails with "cannot find %!PS-Adobe", "cannot find %%EOF" or "overflow doc". A
  // quick cut returns false instead of failing, and when the text holds "%%BeginDocument".
  bool cut_at_crs(std::string_view text, bool quick);
  // Cuts text as the copy of "-keep" needs it: from "%!PS-Adobe" through the line of the
  // last "%%EOF" with its line end, at CR LF, CR or LF, each line keeping its own end.
  // Embedded documents (which may nest), %%BeginData and %%BeginBinary blocks (whose data
  // may be binary) and fonts are opaque: the structure searches see the comments that open
  // and close them, never the lines between. Fails as cut_at_crs does, and with "cannot
  // find %%EndDocument" for an embedded document that is not closed.
  void cut_kept(std::string_view text);
  // Whether lines end at LF too and are printed with their own line ends (cut_kept).
  bool keeps_line_ends() const { return any_line_end; }
  // Whether print_lines writes the template's own bytes, but for the rare lines cut at a NUL:
  // no line end is converted.
  bool prints_as_read() const { return any_line_end || !crlf_seen; }

  int line_count() const { return static_cast<int>(starts.size()) - 1; }
  // A line without its line end, up to its first NUL byte if it holds one.
  std::string_view line(int index) const;
  // Calls visit(line(i)) for each line i from first to last, with less work per line.
  template <typename Visit>
  void each_line(int first, int last, Visit visit) const {
    auto nul_line = std::lower_bound(nul_lines.begin(), nul_lines.end(), first);
    const char* start = line_start(first);
    for (int i = first; i <= last; ++i) {
      const char* next = line_start(i + 1);
      const bool nul = nul_line != nul_lines.end() && *nul_line == i;
      if (nul) ++nul_line;
      visit(line_text(start, next, nul));
      start = next;
    }
  }
  // The text's bytes from the start of line first to the end of line last, line ends (and
  // any bytes after a NUL) included.
  std::string_view bytes_of_lines(int first, int last) const {
    const char* from = line_start(first);
    return {from, static_cast<size_t>(line_start(last + 1) - from)};
  }
  // Writes lines first to last, each followed by a carriage return; after cut_kept, each
  // with its own line end.
  void print_lines(int first, int last, Output& out) const;
  // The first comment line in [from, to] that begins with head (two to four characters,
  // beginning with "%%" or "%A") and whose text passes test; -1 when there is none. Comment
  // lines are those that begin with "%%" or "%A", or hold "%AI5_": structure comments and
  // placed-art markers. Most lines of a large document are none, so searches for them look
  // at these lines only, and at their text only when it can match.
  template <typename Test>
  int find_comment_line(int from, int to, std::string_view head, Test test) const {
    return first_comment_line(from, to, [&](const CommentLine& comment_line) {
      return comment_line.begins_with(head) && test(line(comment_line.index));
    });
  }
  // The first line in [from, to] that holds "%AI5_", the start of every placed-art marker,
  // and whose text passes test; -1 when there is none.
  template <typename Test>
  int find_ai5_line(int from, int to, Test test) const {
    return first_comment_line(from, to, [&](const CommentLine& comment_line) {
      return comment_line.holds_ai5 && test(line(comment_line.index));
    });
  }
  // The first line in [from, to] whose third and fourth characters are "To", where text
  // objects begin; -1 when there is none.
  int find_text_line(int from, int to) const;
  // The first line in [from, to] that begins with "TO", where text objects end; -1 when
  // there is none.
  int find_text_end_line(int from, int to) const;

 private:
  void clear();
  struct LineCutter;
  const char* cut_lines(const char* start, const char* end, bool quick);
  struct LineMarks {
    bool ai5 = false;  // "%AI5_"
    bool nul = false;
  };
  void push_start(const char* start);
  void note_kept_line(int index, const char* start, const char* end);
  void note_line(int index, const char* start, const char* end, LineMarks marks);
  int printed_as_read_until(int first, int last_end,
                            std::vector<int>::const_iterator next_nul_line) const;

  std::string_view text;
  // Where each line starts, then where the line after the last would start: a line's length
  // follows from the next start (after the CR or CR LF), so 1,048,576 lines cost 4 MB.
  LineStarts starts;
  const char* line_start(int index) const {
    return text.data() + starts[static_cast<size_t>(index)];
  }
  // The text of the line that starts at start and before next; nul: whether it holds a NUL.
  std::string_view line_text(const char* start, const char* next, bool nul) const {
    // The next line starts after this one's CR and the LF that may follow it.
    const char* end = no_line_end    ? next
                      : any_line_end ? next - kept_line_end(start, next)
                                     : next - (next[-1] == '\n' ? 2 : 1);
    const std::string_view bytes_read(start, static_cast<size_t>(end - start));
    return no_line_end || nul ? bytes_read.substr(0, bytes_read.find('\0')) : bytes_read;
  }
  // The length of the line end before next, of a line that starts at start: CR LF, CR, LF,
  // or none (the last line may end with the text).
  static size_t kept_line_end(const char* start, const char* next) {
    if (next == start) return 0;
    if (next[-1] == '\r') return 1;
    if (next[-1] != '\n') return 0;
    return next - start >= 2 && next[-2] == '\r' ? 2 : 1;
  }
  // Set when the text holds no CR: its one line then runs to the end of the text.
  bool no_line_end = false;
  bool crlf_seen = false;      // some line ends in CR LF
  bool any_line_end = false;   // cut_kept: CR LF, CR or LF, kept as read
  std::vector<int> nul_lines;  // ascending; rare
  // A comment line, with its first four characters ('\0' past its end).
  struct CommentLine {
    int index;
    char head[4];
    bool holds_ai5;
    bool begins_with(std::string_view text_head) const {
      for (size_t i = 0; i < text_head.size(); ++i) {
        if (text_head[i] != head[i]) return false;
      }
      return true;
    }
  };
  std::vector<CommentLine> comment_lines;  // ascending
  template <typename Keep>
  int first_comment_line(int from, int to, Keep keep) const {
    auto it = std::lower_bound(
        comment_lines.begin(), comment_lines.end(), from,
        [](const CommentLine& comment_line, int index) { return comment_line.index < index; });
    for (; it != comment_lines.end() && it->index <= to; ++it) {
      if (keep(*it)) return it->index;
    }
    return -1;
  }
  std::vector<int> text_lines;      // ascending
  std::vector<int> text_end_lines;  // ascending
  // Where the last search in each of them ended.
  mutable size_t text_line_hint = 0;
  mutable size_t text_end_line_hint = 0;
};
