#include "support/output.h"

#include <sys/uio.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <vector>

#include "driver/diagnostics.h"

void Output::write(std::string_view bytes) {
  buffer.append(bytes);
  flush_if_full();
}

void Output::write_kept(std::string_view bytes) {
  if (fd < 0) {
    write(bytes);
    return;
  }
  close_buffered_piece();
  pieces.push_back({bytes.data(), 0, bytes.size()});
  flush_if_full();
}

void Output::close_buffered_piece() {
  if (buffer.size() > buffered_from) {
    pieces.push_back({nullptr, buffered_from, buffer.size() - buffered_from});
  }
  buffered_from = buffer.size();
}

void Output::line(std::string_view text) {
  buffer.append(text);
  buffer.push_back('\r');
  flush_if_full();
}

namespace {

// Formats into a small array first, so that a whole formatted line costs one append to the
// buffer rather than one per piece.
class Scratch {
 public:
  explicit Scratch(std::string& destination) : out(destination) {}
  // Where n bytes (at most the array's size) may be written; advance() then counts them.
  char* room(size_t n) {
    if (n > sizeof text - used) flush();
    return text + used;
  }
  void advance(size_t n) { used += n; }
  void put(const char* bytes, size_t n) {
    if (n > sizeof text) {
      flush();
      out.append(bytes, n);
      return;
    }
    std::memcpy(room(n), bytes, n);
    used += n;
  }
  void flush() {
    out.append(text, used);
    used = 0;
  }

 private:
  std::string& out;
  char text[256];
  size_t used = 0;
};

void put_integer(Scratch& out, long long value) {
  char* at = out.room(24);
  out.advance(static_cast<size_t>(std::to_chars(at, at + 24, value).ptr - at));
}

// "%f": six decimals, exactly as the C library writes them. A value whose millionths are
// an integer to well within the rounding margin is written from that integer; every other
// value (and NaN, infinities, large values) goes through the C library.
void put_real(Scratch& out, double value) {
  const double millionths = std::fabs(value) * 1e6;
  if (millionths < 1e12) {
    const long long whole = std::llround(millionths);
    if (std::fabs(millionths - static_cast<double>(whole)) < 1e-3) {
      if (std::signbit(value)) out.put("-", 1);
      put_integer(out, whole / 1000000);
      // The six decimals with their leading zeros: "1dddddd" with the '.' written over the 1.
      char* fraction = out.room(7);
      std::to_chars(fraction, fraction + 7, whole % 1000000 + 1000000);
      fraction[0] = '.';
      out.advance(7);
      return;
    }
  }
  char text[32];
  int length = std::snprintf(text, sizeof text, "%f", value);
  if (length >= 0 && static_cast<size_t>(length) < sizeof text) {
    out.put(text, static_cast<size_t>(length));
    return;
  }
  std::vector<char> long_text(static_cast<size_t>(length) + 1);
  std::snprintf(long_text.data(), long_text.size(), "%f", value);
  out.put(long_text.data(), static_cast<size_t>(length));
}

}  // namespace

// Formats %f, %d, %s and %% itself; a format with any other conversion goes through the C
// library instead, from a copy of the arguments taken before any was read.
void Output::printf(const char* format, ...) {
  va_list args;
  va_start(args, format);
  va_list again;
  va_copy(again, args);
  const size_t start = buffer.size();
  Scratch out(buffer);
  bool simple = true;
  for (const char* p = format; simple && *p; ++p) {
    if (*p != '%') {
      const char* literal_end = std::strchr(p, '%');
      if (!literal_end) literal_end = p + std::strlen(p);
      out.put(p, static_cast<size_t>(literal_end - p));
      p = literal_end - 1;
      continue;
    }
    switch (*++p) {
      case 'f':
        put_real(out, va_arg(args, double));
        break;
      case 'd':
        put_integer(out, va_arg(args, int));
        break;
      case 's': {
        const char* text = va_arg(args, const char*);
        out.put(text, std::strlen(text));
        break;
      }
      case '%':
        out.put("%", 1);
        break;
      default:
        simple = false;
        break;
    }
  }
  if (simple) {
    out.flush();
  } else {
    buffer.resize(start);
    vprintf_fallback(format, again);
  }
  va_end(again);
  va_end(args);
  flush_if_full();
}

void Output::vprintf_fallback(const char* format, va_list args) {
  char small[256];
  va_list again;
  va_copy(again, args);
  int length = std::vsnprintf(small, sizeof small, format, args);
  if (length < 0) {
    va_end(again);
    fail("output format error\n");
  }
  size_t n = static_cast<size_t>(length);
  if (n < sizeof small) {
    buffer.append(small, n);
  } else {
    size_t start = buffer.size();
    buffer.resize(start + n + 1);
    std::vsnprintf(&buffer[start], n + 1, format, again);
    buffer.resize(start + n);
  }
  va_end(again);
}

void Output::flush_if_full() {
  if (fd >= 0 && (buffer.size() >= kFlushSize || pieces.size() >= kMaxPieces)) flush();
}

// One writev for all pieces, as many times as the descriptor takes part of them.
void Output::flush() {
  if (fd < 0) return;
  close_buffered_piece();
  std::vector<iovec> chunks;
  chunks.reserve(pieces.size());
  for (const Piece& piece : pieces) {
    const char* base = piece.kept ? piece.kept : buffer.data() + piece.from;
    chunks.push_back({const_cast<char*>(base), piece.length});
  }
  size_t next = 0;
  while (next < chunks.size()) {
    const int count = static_cast<int>(std::min<size_t>(chunks.size() - next, IOV_MAX));
    ssize_t written = ::writev(fd, &chunks[next], count);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) fail("output write error\n");
    for (size_t left = static_cast<size_t>(written); left > 0;) {
      iovec& chunk = chunks[next];
      const size_t taken = std::min(left, chunk.iov_len);
      chunk.iov_base = static_cast<char*>(chunk.iov_base) + taken;
      chunk.iov_len -= taken;
      left -= taken;
      if (chunk.iov_len == 0) ++next;
    }
    while (next < chunks.size() && chunks[next].iov_len == 0) ++next;
  }
  pieces.clear();
  buffer.clear();
  buffered_from = 0;
}
