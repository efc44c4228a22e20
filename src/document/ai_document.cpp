#include "document/ai_document.h"

#include <algorithm>
#include <cstring>

#include "document/layer.h"
#include "driver/diagnostics.h"
#include "support/file_io.h"

const char* strpos(const char* text, long long length, const char* pattern, int direction) {
  long long n = static_cast<long long>(std::strlen(pattern));
  if (length < n || n == 0) return nullptr;
  if (direction == 0) {
    return static_cast<const char*>(
        memmem(text, static_cast<size_t>(length), pattern, static_cast<size_t>(n)));
  }
  if (direction != 1) return nullptr;
  for (long long i = length - n; i >= 0; --i) {
    if (text[i] == pattern[0] && std::memcmp(text + i, pattern, static_cast<size_t>(n)) == 0) {
      return text + i;
    }
  }
  return nullptr;
}

std::string AI_DOCUMENT::read_file(const char* file_name) {
  return read_whole_file(file_name, "ai file open error\n", "ai file read error\n");
}

AI_DOCUMENT::AI_DOCUMENT(std::string bytes) : buffer(std::move(bytes)) {
  eliminate_BeginEndDocument();
  setup_doc();
}

AI_DOCUMENT::~AI_DOCUMENT() = default;

// Embedded documents, from "%%BeginDocument" through "%%EndDocument" and the CR or CR LF
// after it, never reach the line table. They do not nest: the first end closes the cut.
void AI_DOCUMENT::eliminate_BeginEndDocument() {
  static const char kBegin[] = "%%BeginDocument";
  static const char kEnd[] = "%%EndDocument";
  const size_t size = buffer.size();
  size_t read = 0;
  size_t write = 0;
  for (;;) {
    const char* base = buffer.data();
    const char* begin = strpos(base + read, static_cast<long long>(size - read), kBegin, 0);
    if (!begin) break;
    size_t begin_at = static_cast<size_t>(begin - base);
    const char* end = strpos(begin, static_cast<long long>(size - begin_at), kEnd, 0);
    if (!end) fail("cannot find %s\n", kEnd);
    size_t cut_end = static_cast<size_t>(end - base) + sizeof kEnd - 1;
    if (cut_end < size && buffer[cut_end] == '\r') {
      ++cut_end;
      if (cut_end < size && buffer[cut_end] == '\n') ++cut_end;
    }
    std::memmove(&buffer[write], &buffer[read], begin_at - read);
    write += begin_at - read;
    read = cut_end;
  }
  if (read != write) {
    std::memmove(&buffer[write], &buffer[read], size - read);
    buffer.resize(write + size - read);
  }
}

// A line's text ends at its first NUL byte. Lines with a NUL or a '%' are rare, so each
// search for the next one covers many lines at once.
void AI_DOCUMENT::setup_doc() {
  char* text = &buffer[0];
  const long long size = static_cast<long long>(buffer.size());
  char* start = const_cast<char*>(strpos(text, size, "%!PS-Adobe", 0));
  if (!start) fail("cannot find %s\n", "%!PS-Adobe");
  const char* eof = strpos(text, size, "%%EOF", 1);
  if (!eof) fail("cannot find %s\n", "%%EOF");
  // The carriage return right after "%%EOF" still ends a line; text after it is dropped.
  char* const limit = text + (eof - text) + 6;
  char* const buffer_end = text + size;
  auto next = [buffer_end](char* from, char c) {
    char* found = static_cast<char*>(std::memchr(from, c, static_cast<size_t>(buffer_end - from)));
    return found ? found : buffer_end;
  };
  char* line_start = start;
  char* next_nul = next(start, '\0');
  char* next_percent = next(start, '%');
  for (;;) {
    char* cr = next(line_start, '\r');
    if (cr == buffer_end || cr >= limit) break;
    if (starts.size() == kMaxLines) fail("overflow doc\n");
    const bool holds_nul = next_nul < cr;
    if (holds_nul) next_nul = next(cr + 1, '\0');
    const bool holds_percent = next_percent < cr;
    if (holds_percent) next_percent = next(cr + 1, '%');
    *cr = '\0';
    add_line(line_start, holds_percent, holds_nul);
    line_start = cr + 1;
    if (line_start < buffer_end && *line_start == '\n') ++line_start;
  }
  if (starts.empty()) {
    // No line end at all: the one line runs to the end of the text, like a line cut at a CR.
    add_line(start, true, false);
    line_start = start + std::strlen(start) + 1;
  }
  starts.push_back(line_start);
}

void AI_DOCUMENT::add_line(const char* start, bool holds_percent, bool holds_nul) {
  const int index = static_cast<int>(starts.size());
  if (holds_nul) nul_lines.push_back(index);
  if (holds_percent) percent_lines.push_back({index, {start[0], start[0] ? start[1] : '\0'}});
  starts.push_back(start);
}

std::string_view AI_DOCUMENT::line_view(int index) const {
  const size_t i = static_cast<size_t>(index);
  if (!nul_lines.empty() && std::binary_search(nul_lines.begin(), nul_lines.end(), index)) {
    return starts[i];
  }
  // The next line starts after this one's CR (now a NUL) and the LF that may follow it.
  const char* next = starts[i + 1];
  return {starts[i], static_cast<size_t>(next - starts[i]) - 1 - (next[-1] == '\n' ? 1 : 0)};
}

void AI_DOCUMENT::analyze_doc() {
  prolog = std::make_unique<AI_PROLOG>();
  prolog->setup(*this);
  script = std::make_unique<AI_SCRIPT>();
  script->setup(*this);
}

void AI_DOCUMENT::print_new(Output& out) const {
  prolog->print_new(*this, out);
  script->print_new(*this, out);
}

void AI_DOCUMENT::setup_replace_text(const char* id, const TAB_TEXT& table) {
  script->setup_replace_text(id, table);
}

void AI_DOCUMENT::setup_replace_text(const TAB_TEXT& table) {
  script->setup_replace_text(table);
}

void AI_DOCUMENT::setup_replace_placed_art(const char* id, const TAB_TEXT& table) {
  script->setup_replace_placed_art(id, table);
}
