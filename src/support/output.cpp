#include "support/output.h"

#include <sys/uio.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstdarg>
#include <cstdint>
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

// The two digits of each number below 100, two at a time being twice as fast as one.
constexpr char kPairs[] =
    "00010203040506070809101112131415161718192021222324252627282930313233343536373839"
    "40414243444546474849505152535455565758596061626364656667686970717273747576777879"
    "8081828384858687888990919293949596979899";

// Writes n (below 100) as two digits right before end; returns where they begin.
char* pair_before(char* end, uint64_t n) {
  end[-1] = kPairs[2 * n + 1];
  end[-2] = kPairs[2 * n];
  return end - 2;
}

// Writes n in decimal so that it ends right before end; returns where it begins.
char* digits_before(char* end, uint64_t n) {
  char* first = end;
  for (; n >= 100; n /= 100) first = pair_before(first, n % 100);
  if (n >= 10) return pair_before(first, n);
  *--first = static_cast<char>('0' + n);
  return first;
}

uint64_t digit_count(uint64_t n) {
  uint64_t count = 1;
  for (; n >= 10; n /= 10) ++count;
  return count;
}

void put_integer(Scratch& out, long long value) {
  char* at = out.room(24);
  out.advance(static_cast<size_t>(std::to_chars(at, at + 24, value).ptr - at));
}

void put_real_by_library(Scratch& out, double value);

// "%f": six decimals, exactly as the C library writes them. A value whose millionths are
// an integer to well within the rounding margin is written from that integer; every other
// value (and NaN, infinities, large values) goes through the C library. Where adding a half
// and cutting does not round to the nearest integer, the value lies halfway between two and
// fails the margin anyway.
void put_real(Scratch& out, double value) {
  const double millionths = std::fabs(value) * 1e6;
  if (millionths < 1e12) {
    const auto whole = static_cast<uint64_t>(millionths + 0.5);
    if (std::fabs(millionths - static_cast<double>(whole)) < 1e-3) {
      const uint64_t units = whole / 1000000;
      const uint64_t decimals = whole % 1000000;
      const size_t length = (std::signbit(value) ? 1 : 0) + digit_count(units) + 7;
      // Written from the last digit back: six decimals, the point, the integer part.
      char* const end = out.room(length) + length;
      char* first = pair_before(end, decimals % 100);
      first = pair_before(first, decimals / 100 % 100);
      first = pair_before(first, decimals / 10000);
      *--first = '.';
      first = digits_before(first, units);
      if (std::signbit(value)) *--first = '-';
      out.advance(length);
      return;
    }
  }
  put_real_by_library(out, value);
}

// Values far from an integer number of millionths, and NaN, infinities and large values.
void put_real_by_library(Scratch& out, double value) {
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

template <typename NUMBER, typename PUT>
void put_line(std::string& buffer, const NUMBER* values, size_t count, std::string_view op,
              PUT put) {
  Scratch out(buffer);
  for (size_t i = 0; i < count; ++i) {
    put(out, values[i]);
    out.put(" ", 1);
  }
  out.put(op.data(), op.size());
  out.put("\r", 1);
  out.flush();
}

}  // namespace

void Output::reals_line(const double* values, size_t count, std::string_view op) {
  put_line(buffer, values, count, op, put_real);
  flush_if_full();
}

void Output::integers_line(const int* values, size_t count, std::string_view op) {
  put_line(buffer, values, count, op, put_integer);
  flush_if_full();
}

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
