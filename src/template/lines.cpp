#include "template/lines.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <utility>

#include "support/error.h"
#include "support/output.h"

// The forward search hops from one occurrence of the pattern's first byte to the next,
// which is fast where that byte is rare ('%' in PostScript).
const char* strpos(const char* text, long long length, const char* pattern, int direction) {
  const size_t n = std::strlen(pattern);
  if (length < static_cast<long long>(n) || n == 0) return nullptr;
  const char* last = text + (length - static_cast<long long>(n));
  if (direction == 0) {
    for (const char* p = text; p <= last; ++p) {
      p = static_cast<const char*>(std::memchr(p, pattern[0], static_cast<size_t>(last - p) + 1));
      if (!p) return nullptr;
      if (std::memcmp(p, pattern, n) == 0) return p;
    }
    return nullptr;
  }
  if (direction != 1) return nullptr;
  for (long long i = last - text; i >= 0; --i) {
    if (text[i] == pattern[0] && std::memcmp(text + i, pattern, n) == 0) return text + i;
  }
  return nullptr;
}

namespace {

const char kBeginDocument[] = "%%BeginDocument";

// Where the line after the one that ends at cr starts: a LF right after the CR belongs to
// the line end.
const char* past_cr(const char* cr, const char* end) {
  const char* next = cr + 1;
  return next < end && *next == '\n' ? next + 1 : next;
}

bool holds_begin_document(const char* from, const char* to) {
  return strpos(from, to - from, kBeginDocument, 0) != nullptr;
}

}  // namespace

void LineStarts::reset(size_t expected_lines) {
  low.clear();
  low.reserve(expected_lines);
  steps.clear();
}

void LineStarts::push(const size_t* offsets, size_t count) {
  if (count == 0) return;
  // Below the next 4 GiB step, as nearly always, the offsets go in as they are, in one
  // block.
  if (offsets[count - 1] >> 32 == steps.size()) {
    const size_t old_size = low.size();
    low.resize(old_size + count);
    for (size_t i = 0; i < count; ++i) low[old_size + i] = static_cast<uint32_t>(offsets[i]);
    return;
  }
  for (size_t i = 0; i < count; ++i) {
    while (offsets[i] >> 32 > steps.size()) steps.push_back(low.size());
    low.push_back(static_cast<uint32_t>(offsets[i]));
  }
}

void LINE_INDEX::clear(int shift) {
  lines = 0;
  stride_shift = shift;
  kept_starts.reset(0);
  end_of_lines = 0;
  for (Cursor& cursor : cursors) cursor = Cursor();
  no_line_end = false;
  crlf_seen = false;
  any_line_end = false;
  nul_lines.clear();
  comment_lines.clear();
  text_lines.clear();
  text_end_lines.clear();
  text_line_hint = 0;
  text_end_line_hint = 0;
  for (size_t& hint : lookup_hints) hint = 0;
}

// Cuts the text from "%!PS-Adobe" to the CR after the last "%%EOF" into lines: a line's text
// ends at its CR or at its first NUL byte. The lines, and among them the comment lines, the
// lines with a NUL and the lines that begin and end text objects, are all found in one pass. A
// quick cut returns false instead of failing, and when the text holds an embedded document.
bool LINE_INDEX::cut_at_crs(std::string_view text_to_cut, bool quick) {
  clear(kStrideShift);
  text = text_to_cut;
  const char* const text_end = text.data() + text.size();
  const char* start = strpos(text.data(), static_cast<long long>(text.size()), "%!PS-Adobe", 0);
  const char* eof = strpos(text.data(), static_cast<long long>(text.size()), "%%EOF", 1);
  if (quick && !(start && eof)) return false;
  if (!start) fail("cannot find %s\n", "%!PS-Adobe");
  if (!eof) fail("cannot find %s\n", "%%EOF");
  // The carriage return right after "%%EOF" still ends a line; text after it is dropped.
  const char* const limit = std::min(eof + 6, text_end);
  // The cut itself watches the bytes from start to limit.
  if (quick && (holds_begin_document(text.data(), std::min(start + 14, text_end)) ||
                holds_begin_document(limit, text_end))) {
    return false;
  }
  kept_starts.reset(std::min<size_t>(kMaxLines, static_cast<size_t>(limit - start)) / kStride + 1);
  keep_start(start);
  const char* after_last_cr = cut_lines(start, limit, quick);
  if (!after_last_cr) return false;
  if (lines == 0) {
    // No line end at all: the one line runs to the end of the text.
    no_line_end = true;
    note_line(0, start, text_end, {true, true});
    lines = 1;
    after_last_cr = text_end;
  }
  end_of_lines = static_cast<size_t>(after_last_cr - text.data());
  return true;
}

// The state of the cut: the line being cut, what it holds so far, and how many lines ended
// before it.
struct LINE_INDEX::LineCutter {
  LineCutter(LINE_INDEX& document, const char* start, bool quick_cut)
      : doc(document),
        text_end(doc.text.data() + doc.text.size()),
        line_start(start),
        quick(quick_cut) {}

  LINE_INDEX& doc;
  const char* text_end;
  const char* line_start;
  bool quick;
  bool stopped = false;
  LineMarks marks;
  int count = 0;
  // Whether the line being cut began in a plain block: nothing in it can make it a line to
  // note unless a later block is not plain.
  bool begun_plain = false;

  void mark(const char* p) {
    switch (*p) {
      case '\r':
        end_line(p);
        break;
      case '%':
        percent_mark(p);
        break;
      case '\0':
        marks.nul = true;
        break;
    }
  }
  void percent_mark(const char* p) {
    const long left = text_end - p;
    if (left >= 5 && p[1] == 'A' && p[2] == 'I' && p[3] == '5' && p[4] == '_') marks.ai5 = true;
    if (quick && left >= 15 && p[1] == '%' && std::memcmp(p, kBeginDocument, 15) == 0) {
      stopped = true;
    }
  }
  void end_line(const char* cr) {
    // Most lines are no comment line, hold no NUL and cannot begin or end a text object
    // ("0 To", "TO"): of those nothing is kept.
    const long length = cr - line_start;
    const bool comment = marks.ai5 || (length >= 2 && line_start[0] == '%' &&
                                       (line_start[1] == '%' || line_start[1] == 'A'));
    if (comment || marks.nul ||
        (length >= 2 && (line_start[0] == 'T' || (length >= 4 && line_start[2] == 'T')))) {
      doc.note_line(count, line_start, cr, marks);
    }
    marks = LineMarks();
    line_start = past_line_end(cr);
    if (++count % kStride == 0) doc.keep_start(line_start);
    if (count > kMaxLines) too_many_lines();
  }
  // Where the line after the one that ends at cr starts.
  const char* past_line_end(const char* cr) {
    const char* next = cr + 1;
    if (next < text_end && *next == '\n') {
      ++next;
      doc.crlf_seen = true;
    }
    return next;
  }
  // Past the most lines a document may have, a quick cut stops and a careful one fails.
  void too_many_lines() {
    if (!quick) fail("overflow doc\n");
    stopped = true;
  }
};

#if defined(__SSE2__)
// In a plain block the lines that end are only counted, every kStride-th keeping its start,
// but for a line begun in a block that was not plain, which may be one to note.
void LINE_INDEX::cut_block(LineCutter& cutter, const char* block, const LINE_BLOCK& marks) {
  if (!marks.plain) {
    for (uint64_t bits = marks.crs | marks.others; bits; bits &= bits - 1) {
      cutter.mark(block + __builtin_ctzll(bits));
    }
    cutter.begun_plain = false;
    return;
  }
  uint64_t bits = marks.crs;
  int ended = marks.cr_count;
  if (bits != 0 && !cutter.begun_plain) {
    cutter.end_line(block + __builtin_ctzll(bits));
    bits &= bits - 1;
    --ended;
  }
  cutter.begun_plain = cutter.begun_plain || marks.crs != 0;
  if (bits == 0) return;
  if (marks.crlf) crlf_seen = true;
  const int before = cutter.count;
  cutter.count += ended;
  for (int kept = before / kStride * kStride + kStride; kept <= cutter.count; kept += kStride) {
    uint64_t kept_cr = bits;
    for (int i = before + 1; i < kept; ++i) kept_cr &= kept_cr - 1;
    keep_start(cutter.past_line_end(block + __builtin_ctzll(kept_cr)));
  }
  cutter.line_start = cutter.past_line_end(block + 63 - __builtin_clzll(bits));
  if (cutter.count > kMaxLines) cutter.too_many_lines();
}
#endif

// Returns where the text after the last CR begins, or nullptr when a quick cut stops. Most
// bytes are no CR, '%' or NUL, so where the CPU compares 16 bytes at once, only the bytes
// that matter are visited.
const char* LINE_INDEX::cut_lines(const char* p, const char* end, bool quick) {
  LineCutter cutter(*this, p, quick);
#if defined(__SSE2__)
  // Blocks are scanned a few at a time, then cut.
  constexpr size_t kBlocks = 16;
  LINE_BLOCK found[kBlocks];
  const auto scan = can_scan_blocks64()   ? scan_blocks64
                    : can_scan_blocks32() ? scan_blocks32
                                          : scan_blocks16;
  while (end - p > 64 && !cutter.stopped) {
    const size_t count = std::min(kBlocks, static_cast<size_t>(end - p - 1) / 64);
    scan(p, count, found);
    for (size_t i = 0; i < count && !cutter.stopped; ++i, p += 64) cut_block(cutter, p, found[i]);
  }
#endif
  for (; p < end && !cutter.stopped; ++p) cutter.mark(p);
  lines = cutter.count;
  return cutter.stopped ? nullptr : cutter.line_start;
}

// A line that may be a comment line, holds a NUL, or may begin or end a text object; end is
// where its CR stands, or the end of the text.
void LINE_INDEX::note_line(int index, const char* start, const char* end, LineMarks marks) {
  const std::string_view bytes_read(start, static_cast<size_t>(end - start));
  const std::string_view line_text =
      marks.nul ? bytes_read.substr(0, bytes_read.find('\0')) : bytes_read;
  auto at = [&line_text](size_t i) { return i < line_text.size() ? line_text[i] : '\0'; };
  if (marks.nul) nul_lines.push_back(index);
  if (marks.ai5 || (at(0) == '%' && (at(1) == '%' || at(1) == 'A'))) {
    comment_lines.push_back(
        {found_line(index, start, end), {at(0), at(1), at(2), at(3)}, marks.ai5});
  }
  if (at(0) && at(1) && at(2) == 'T' && at(3) == 'o') {
    text_lines.push_back(found_line(index, start, end));
  }
  if (at(0) == 'T' && at(1) == 'O') text_end_lines.push_back(found_line(index, start, end));
}

// With where the next line starts: printing a text object, or anything up to a comment,
// would otherwise read its line again, long after the cut, only to find its end.
LINE_INDEX::FoundLine LINE_INDEX::found_line(int index, const char* start, const char* end) const {
  const char* const text_end = text.data() + text.size();
  // A cut for "-keep" keeps every line's start: no length is needed.
  const auto length =
      sparse() && end < text_end ? static_cast<size_t>(past_cr(end, text_end) - start) : 0;
  return {index, length <= UINT32_MAX ? static_cast<uint32_t>(length) : 0,
          static_cast<size_t>(start - text.data())};
}

// The layers ask for text objects one after the other, so each search starts where the one
// before ended; a search that goes back, or far ahead, is a binary search. The line found is
// remembered: it is looked up next.
int LINE_INDEX::first_found(const std::vector<FoundLine>& found, size_t& hint, int from,
                            int to) const {
  constexpr size_t kSteps = 8;
  const auto before = [](const FoundLine& line, int index) { return line.index < index; };
  auto it = found.begin() + static_cast<std::ptrdiff_t>(std::min(hint, found.size()));
  if (it != found.begin() && it[-1].index >= from) it = found.begin();
  for (size_t step = 0; it != found.end() && it->index < from; ++it) {
    if (++step == kSteps) {
      it = std::lower_bound(it, found.end(), from, before);
      break;
    }
  }
  hint = static_cast<size_t>(it - found.begin());
  if (it == found.end() || it->index > to) return -1;
  remember(*it);
  return it->index;
}

int LINE_INDEX::find_text_line(int from, int to) const {
  return first_found(text_lines, text_line_hint, from, to);
}

size_t LINE_INDEX::text_line_count(int from, int to) const {
  const auto before = [](const FoundLine& line, int index) { return line.index < index; };
  const auto first = std::lower_bound(text_lines.begin(), text_lines.end(), from, before);
  return static_cast<size_t>(std::lower_bound(first, text_lines.end(), to + 1, before) - first);
}

int LINE_INDEX::find_text_end_line(int from, int to) const {
  return first_found(text_end_lines, text_end_line_hint, from, to);
}

// A line whose start is none of those at hand: from the nearest start known before it, the
// CRs are found.
const char* LINE_INDEX::find_start(int index) const {
  const size_t kept = static_cast<size_t>(index >> stride_shift);
  int from = static_cast<int>(kept) << stride_shift;
  const char* start = text.data() + kept_starts[kept];
  auto nearer = [&](int line, const char* line_start) {
    if (line > from && line <= index) {
      from = line;
      start = line_start;
    }
  };
  for (const Cursor& cursor : cursors) nearer(cursor.line, cursor.start);
  // Printing asks for the lines around text objects and comments, long after they were
  // found: their starts are in the lists of found lines, and the text is not read again.
  auto nearer_found = [&](const FoundLine* found) {
    if (!found) return;
    nearer(found->index, text.data() + found->start);
    if (found->length != 0) nearer(found->index + 1, text.data() + found->start + found->length);
  };
  nearer_found(last_found(text_lines, lookup_hints[0], index,
                          [](const FoundLine& line) -> const FoundLine& { return line; }));
  nearer_found(last_found(text_end_lines, lookup_hints[1], index,
                          [](const FoundLine& line) -> const FoundLine& { return line; }));
  nearer_found(last_found(comment_lines, lookup_hints[2], index,
                          [](const CommentLine& line) -> const FoundLine& { return line.line; }));
  start = past_crs(start, index - from);
  remember(index, start);
  return start;
}

// Only a cut at CRs keeps some line starts out, and every line it cut ends at a CR: the
// count-th CR from start is there to be found.
const char* LINE_INDEX::past_crs(const char* start, int count) const {
  const char* const end = text.data() + text.size();
  for (; count > 0; --count) start = past_cr(find_cr(start, end), end);
  return start;
}

// Lines are often read one after the other: where the next one starts is remembered.
std::string_view LINE_INDEX::line(int index) const {
  const char* start = line_start(index);
  const char* next = start_after(index, start);
  if (sparse()) remember(index, start, next);
  return line_text(start, next, std::binary_search(nul_lines.begin(), nul_lines.end(), index));
}

// The lines from line first on (which starts at *start), before last_end, that end in a CR
// alone and hold no NUL: their bytes in the template, CRs included, are what printing
// writes. *start receives where the line after them starts.
int LINE_INDEX::printed_as_read_until(int first, int last_end,
                                      std::vector<int>::const_iterator next_nul_line,
                                      const char** start) const {
  if (no_line_end) return first;
  const int end = next_nul_line != nul_lines.end() ? std::min(*next_nul_line, last_end) : last_end;
  if (!crlf_seen) {
    if (end > first) *start = line_start(end);
    return end;
  }
  for (int i = first; i < end; ++i) {
    const char* next = start_after(i, *start);
    if (next[-1] != '\r') return i;
    *start = next;
  }
  return end;
}

// A run of lines printed as read is written straight from the template's bytes, which stay
// as they are while the document lives.
void LINE_INDEX::print_lines(int first, int last, Output& out) const {
  if (any_line_end) {
    out.write_kept(bytes_of_lines(first, last));
    return;
  }
  auto nul = std::lower_bound(nul_lines.begin(), nul_lines.end(), first);
  const char* start = line_start(first);
  for (int i = first; i <= last;) {
    const char* from = start;
    const int end = printed_as_read_until(i, last + 1, nul, &start);
    if (end > i) {
      out.write_kept(std::string_view(from, static_cast<size_t>(start - from)));
      i = end;
      continue;
    }
    const bool holds_nul = nul != nul_lines.end() && *nul == i;
    if (holds_nul) ++nul;
    const char* next = start_after(i, start);
    out.line(line_text(start, next, holds_nul));
    start = next;
    ++i;
  }
}
