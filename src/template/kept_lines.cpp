// How "-keep" cuts a template: at CR LF, CR or LF, each line keeping its own end, with the
// blocks whose lines the structure searches must not see (embedded documents, data, binary
// and font blocks) found first.
#include "template/lines.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <map>
#include <utility>
#include <vector>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "support/error.h"

namespace {

// The first CR or LF in [p, end), or end.
const char* find_line_end(const char* p, const char* end) {
#if defined(__SSE2__)
  const __m128i cr = _mm_set1_epi8('\r');
  const __m128i lf = _mm_set1_epi8('\n');
  for (; end - p >= 16; p += 16) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
    const int mask =
        _mm_movemask_epi8(_mm_or_si128(_mm_cmpeq_epi8(bytes, cr), _mm_cmpeq_epi8(bytes, lf)));
    if (mask != 0) return p + __builtin_ctz(static_cast<unsigned>(mask));
  }
#endif
  for (; p < end; ++p) {
    if (*p == '\r' || *p == '\n') return p;
  }
  return end;
}

// Where the line that holds p ends, its line end included.
const char* past_line_end(const char* p, const char* end) {
  p = find_line_end(p, end);
  if (p == end) return end;
  return *p == '\r' && p + 1 < end && p[1] == '\n' ? p + 2 : p + 1;
}

bool starts_with(const char* p, const char* end, std::string_view prefix) {
  return static_cast<size_t>(end - p) >= prefix.size() &&
         std::memcmp(p, prefix.data(), prefix.size()) == 0;
}

// A block whose lines the structure searches do not see (its comments are literals, so
// their data ends with a NUL). A counted block's comment gives
// the length of its data, in bytes or (with "Lines") in lines, counted from the line after
// the comment; its end comment is looked for from there on, so that the data may hold
// anything, and from the data's start when the count is wrong.
struct OPAQUE_KIND {
  std::string_view begin;
  std::string_view end;
  bool counted;
};

const OPAQUE_KIND kOpaqueKinds[] = {
    {"%%BeginDocument", "%%EndDocument", false},
    {"%%BeginData:", "%%EndData", true},
    {"%%BeginBinary:", "%%EndBinary", true},
    {"%%BeginFont", "%%EndFont", false},
};

class OPAQUE_FINDER {
 public:
  OPAQUE_FINDER(const char* text_start, const char* text_end)
      : start(text_start), limit(text_end) {}

  // The data of every top-level opaque block: from the line after its opening comment to
  // the start of its closing comment's line.
  std::vector<std::pair<const char*, const char*>> find() const {
    std::vector<std::pair<const char*, const char*>> blocks;
    for (const char* p = start; (p = next_comment(p, "%%Begin"));) {
      const OPAQUE_KIND* kind = kind_at(p);
      const char* data = past_line_end(p, limit);
      const char* end = kind ? block_end(*kind, p, data) : nullptr;
      if (!end) {
        p = data;
        continue;
      }
      blocks.emplace_back(data, end);
      p = end + kind->end.size();
    }
    return blocks;
  }

 private:
  // The next place from p on where a line begins with prefix, or nullptr.
  const char* next_comment(const char* p, const char* prefix) const {
    while ((p = strpos(p, limit - p, prefix, 0))) {
      if (p == start || p[-1] == '\r' || p[-1] == '\n') return p;
      ++p;
    }
    return nullptr;
  }
  // The same for an end comment. A search from a place at or after an earlier search's
  // start, and not past what that one found, finds the same: blocks that open one after
  // another without their end comment do not scan the rest of the text each.
  const char* next_end_comment(const char* p, const char* prefix) const {
    if (p > limit) return nullptr;
    SEARCH& last = end_searches[prefix];
    if (last.from && last.from <= p && (!last.found || p <= last.found)) return last.found;
    last = {p, next_comment(p, prefix)};
    return last.found;
  }
  const OPAQUE_KIND* kind_at(const char* p) const {
    for (const OPAQUE_KIND& kind : kOpaqueKinds) {
      if (starts_with(p, limit, kind.begin)) return &kind;
    }
    return nullptr;
  }
  // Where the closing comment of the block opened at comment stands, or nullptr.
  const char* block_end(const OPAQUE_KIND& kind, const char* comment, const char* data) const {
    if (kind.begin == kOpaqueKinds[0].begin) return document_end(data);
    if (kind.counted) {
      if (const char* end = next_end_comment(counted_end(comment, data), kind.end.data()))
        return end;
    }
    return next_end_comment(data, kind.end.data());
  }
  // Where the data of a counted block ends by its count; the data's start when the comment
  // gives none.
  const char* counted_end(const char* comment, const char* data) const {
    const char* p = comment;
    while (p < data && *p != ':') ++p;
    while (p < data && (*p == ':' || *p == ' ' || *p == '\t')) ++p;
    size_t count = 0;
    bool digits = false;
    for (; p < data && *p >= '0' && *p <= '9'; ++p) {
      digits = true;
      count = std::min<size_t>(count * 10 + static_cast<size_t>(*p - '0'), SIZE_MAX / 20);
    }
    if (!digits) return data;
    const std::string_view rest(p, static_cast<size_t>(data - p));
    if (rest.find("Lines") != std::string_view::npos) {
      const char* end = data;
      for (size_t i = 0; i < count && end < limit; ++i) end = past_line_end(end, limit);
      return end;
    }
    return count >= static_cast<size_t>(limit - data) ? limit : data + count;
  }
  // Embedded documents nest; the blocks inside one are passed over whole.
  const char* document_end(const char* p) const {
    int depth = 1;
    while ((p = next_comment(p, "%%"))) {
      if (starts_with(p, limit, "%%EndDocument")) {
        if (--depth == 0) return p;
      } else if (const OPAQUE_KIND* kind = kind_at(p)) {
        if (kind->begin == kOpaqueKinds[0].begin) {
          ++depth;
        } else {
          const char* data = past_line_end(p, limit);
          if (const char* end = block_end(*kind, p, data)) p = end;
        }
      }
      p += 2;
    }
    fail("cannot find %s\n", "%%EndDocument");
  }

  const char* start;
  const char* limit;
  struct SEARCH {
    const char* from;
    const char* found;
  };
  mutable std::map<const char*, SEARCH> end_searches;  // by end comment
};

}  // namespace

void LINE_INDEX::cut_kept(std::string_view text_to_cut) {
  clear(0);
  any_line_end = true;
  text = text_to_cut;
  const char* const text_end = text.data() + text.size();
  const char* start = strpos(text.data(), static_cast<long long>(text.size()), "%!PS-Adobe", 0);
  if (!start) fail("cannot find %s\n", "%!PS-Adobe");
  const char* eof = strpos(start, text_end - start, "%%EOF", 1);
  if (!eof) fail("cannot find %s\n", "%%EOF");
  const char* const limit = past_line_end(eof, text_end);
  const auto opaque = OPAQUE_FINDER(start, limit).find();
  auto block = opaque.begin();
  for (const char* p = start; p < limit; ++lines) {
    if (lines == kMaxLines) fail("overflow doc\n");
    const char* end = find_line_end(p, limit);
    keep_start(p);
    while (block != opaque.end() && block->second <= p) ++block;
    if (block == opaque.end() || p < block->first) note_kept_line(lines, p, end);
    p = end == limit ? limit : past_line_end(end, limit);
  }
  end_of_lines = static_cast<size_t>(limit - text.data());
}

// Most lines are no comment line, hold no NUL and cannot begin or end a text object.
void LINE_INDEX::note_kept_line(int index, const char* start, const char* end) {
  const size_t length = static_cast<size_t>(end - start);
  LineMarks marks;
  if (const void* percent = std::memchr(start, '%', length)) {
    const char* from = static_cast<const char*>(percent);
    marks.ai5 = strpos(from, end - from, "%AI5_", 0) != nullptr;
  }
  marks.nul = std::memchr(start, '\0', length) != nullptr;
  const bool comment = marks.ai5 || (length >= 2 && start[0] == '%');
  if (comment || marks.nul ||
      (length >= 2 && (start[0] == 'T' || (length >= 4 && start[2] == 'T')))) {
    note_line(index, start, end, marks);
  }
}
