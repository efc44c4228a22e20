#include "template/lines.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <utility>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

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

void LINE_INDEX::clear() {
  no_line_end = false;
  crlf_seen = false;
  any_line_end = false;
  nul_lines.clear();
  comment_lines.clear();
  text_lines.clear();
  text_end_lines.clear();
  text_line_hint = 0;
  text_end_line_hint = 0;
}

// Cuts the text from "%!PS-Adobe" to the CR after the last "%%EOF" into lines: a line's text
// ends at its CR or at its first NUL byte. The lines, and among them the comment lines, the
// lines with a NUL and the lines that begin and end text objects, are all found in one pass. A
// quick cut returns false instead of failing, and when the text holds an embedded document.
bool LINE_INDEX::cut_at_crs(std::string_view text_to_cut, bool quick) {
  clear();
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
  starts.reset(std::min<size_t>(kMaxLines, static_cast<size_t>(limit - start)) + 1);
  const char* after_last_cr = cut_lines(start, limit, quick);
  if (!after_last_cr) return false;
  if (starts.empty()) {
    // No line end at all: the one line runs to the end of the text.
    no_line_end = true;
    note_line(0, start, text_end, {true, true});
    push_start(start);
    after_last_cr = text_end;
  }
  push_start(after_last_cr);
  return true;
}

void LINE_INDEX::push_start(const char* start) {
  const size_t offset = static_cast<size_t>(start - text.data());
  starts.push(&offset, 1);
}

// The state of the cut: the line being cut and what it holds so far, and the line starts
// found since they were last handed to the document.
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
  int handed_over = 0;
  static constexpr int kPending = 1024;
  size_t pending[kPending];  // offsets
  int pending_count = 0;

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
    // ("0 To", "TO"): of those only the start is kept.
    const long length = cr - line_start;
    const bool comment = marks.ai5 || (length >= 2 && line_start[0] == '%' &&
                                       (line_start[1] == '%' || line_start[1] == 'A'));
    if (comment || marks.nul ||
        (length >= 2 && (line_start[0] == 'T' || (length >= 4 && line_start[2] == 'T')))) {
      doc.note_line(handed_over + pending_count, line_start, cr, marks);
    }
    marks = LineMarks();
    pending[pending_count++] = static_cast<size_t>(line_start - doc.text.data());
    line_start = cr + 1;
    if (line_start < text_end && *line_start == '\n') {
      ++line_start;
      doc.crlf_seen = true;
    }
    if (pending_count == kPending) hand_over();
  }
  // Past the most lines a document may have, a quick cut stops and a careful one fails.
  void hand_over() {
    handed_over += pending_count;
    if (handed_over > kMaxLines) {
      if (!quick) fail("overflow doc\n");
      stopped = true;
      return;
    }
    doc.starts.push(pending, static_cast<size_t>(pending_count));
    pending_count = 0;
  }
};

#if defined(__SSE2__)
namespace {

// Bit i is set where block[i] is one of the bytes; 64 bytes at a time, so that each loop
// turn usually finds a line end or two.
struct Marks64 {
  uint64_t crs;
  uint64_t others;  // '%' and NUL
};

Marks64 marks64(const char* block) {
  const __m128i cr = _mm_set1_epi8('\r');
  const __m128i percent = _mm_set1_epi8('%');
  const __m128i nul = _mm_setzero_si128();
  __m128i bytes[4];
  for (int i = 0; i < 4; ++i) {
    bytes[i] = _mm_loadu_si128(reinterpret_cast<const __m128i*>(block + 16 * i));
  }
  auto mask = [&bytes](auto match, int i) {
    return static_cast<uint64_t>(static_cast<uint16_t>(_mm_movemask_epi8(match(bytes[i]))))
           << (16 * i);
  };
  auto crs = [cr](__m128i b) { return _mm_cmpeq_epi8(b, cr); };
  auto others = [percent, nul](__m128i b) {
    return _mm_or_si128(_mm_cmpeq_epi8(b, percent), _mm_cmpeq_epi8(b, nul));
  };
  Marks64 marks{0, 0};
  for (int i = 0; i < 4; ++i) marks.crs |= mask(crs, i);
  // '%' and NUL are rare: one test tells whether the block holds any.
  const __m128i any = _mm_or_si128(_mm_or_si128(others(bytes[0]), others(bytes[1])),
                                   _mm_or_si128(others(bytes[2]), others(bytes[3])));
  if (_mm_movemask_epi8(any) == 0) return marks;
  for (int i = 0; i < 4; ++i) marks.others |= mask(others, i);
  return marks;
}

}  // namespace
#endif

// Returns where the text after the last CR begins, or nullptr when a quick cut stops. Most
// bytes are no CR, '%' or NUL, so where the CPU compares 16 bytes at once, only the bytes
// that matter are visited.
const char* LINE_INDEX::cut_lines(const char* p, const char* end, bool quick) {
  LineCutter cutter(*this, p, quick);
#if defined(__SSE2__)
  for (; end - p >= 64 && !cutter.stopped; p += 64) {
    const Marks64 marks = marks64(p);
    if (marks.others == 0) {
      for (uint64_t bits = marks.crs; bits; bits &= bits - 1) {
        cutter.end_line(p + __builtin_ctzll(bits));
      }
      continue;
    }
    for (uint64_t bits = marks.crs | marks.others; bits; bits &= bits - 1) {
      cutter.mark(p + __builtin_ctzll(bits));
    }
  }
#endif
  for (; p < end && !cutter.stopped; ++p) cutter.mark(p);
  if (!cutter.stopped) cutter.hand_over();
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
    comment_lines.push_back({index, {at(0), at(1), at(2), at(3)}, marks.ai5});
  }
  if (at(0) && at(1) && at(2) == 'T' && at(3) == 'o') text_lines.push_back(index);
  if (at(0) == 'T' && at(1) == 'O') text_end_lines.push_back(index);
}

namespace {

// The layers ask for text objects one after the other, so each search starts where the one
// before ended; a search that goes back, or far ahead, is a binary search.
int first_in(const std::vector<int>& lines, size_t& hint, int from, int to) {
  constexpr size_t kSteps = 8;
  auto it = lines.begin() + static_cast<std::ptrdiff_t>(std::min(hint, lines.size()));
  if (it != lines.begin() && it[-1] >= from) it = lines.begin();
  for (size_t step = 0; it != lines.end() && *it < from; ++it) {
    if (++step == kSteps) {
      it = std::lower_bound(it, lines.end(), from);
      break;
    }
  }
  hint = static_cast<size_t>(it - lines.begin());
  return it != lines.end() && *it <= to ? *it : -1;
}

}  // namespace

int LINE_INDEX::find_text_line(int from, int to) const {
  return first_in(text_lines, text_line_hint, from, to);
}

int LINE_INDEX::find_text_end_line(int from, int to) const {
  return first_in(text_end_lines, text_end_line_hint, from, to);
}

std::string_view LINE_INDEX::line(int index) const {
  return line_text(line_start(index), line_start(index + 1),
                   std::binary_search(nul_lines.begin(), nul_lines.end(), index));
}

// The lines from first on, before last_end, that end in a CR alone and hold no NUL: their
// bytes in the template, CRs included, are what printing writes.
int LINE_INDEX::printed_as_read_until(int first, int last_end,
                                      std::vector<int>::const_iterator next_nul_line) const {
  if (no_line_end) return first;
  int end = next_nul_line != nul_lines.end() ? std::min(*next_nul_line, last_end) : last_end;
  if (!crlf_seen) return end;
  for (int i = first; i < end; ++i) {
    if (line_start(i + 1)[-1] != '\r') return i;
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
  for (int i = first; i <= last;) {
    const int end = printed_as_read_until(i, last + 1, nul);
    if (end > i) {
      const char* from = line_start(i);
      out.write_kept(std::string_view(from, static_cast<size_t>(line_start(end) - from)));
      i = end;
      continue;
    }
    out.line(line(i));
    if (nul != nul_lines.end() && *nul == i) ++nul;
    ++i;
  }
}
