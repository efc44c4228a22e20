#include "support/output.h"

#include <fcntl.h>
#include <sys/stat.h>
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

#include "support/error.h"

void Output::write_kept(std::string_view bytes) {
  if (fd < 0) {
    write(bytes);
    return;
  }
  close_buffered_piece();
  // Ranges of a template that follow one another in it are written as one: a pipe takes one
  // large write much faster than many small ones.
  if (!pieces.empty() && pieces.back().kept &&
      pieces.back().kept + pieces.back().length == bytes.data()) {
    pieces.back().length += bytes.size();
    return;
  }
  pieces.push_back({bytes.data(), 0, bytes.size()});
  flush_if_full();
}

void Output::close_buffered_piece() {
  if (used > buffered_from) pieces.push_back({nullptr, buffered_from, used - buffered_from});
  buffered_from = used;
}

void Output::grow(size_t n) {
  const size_t grown = std::max({2 * capacity, used + n, kFirstRoom});
  std::unique_ptr<char[]> room(new char[grown]);
  if (used > 0) std::memcpy(room.get(), storage.get(), used);
  storage = std::move(room);
  capacity = grown;
}

namespace {

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

// Writes n in decimal from at on; returns where it ends. Most integer parts have one or two
// digits.
char* integer_digits(char* at, uint64_t n) {
  if (n < 10) {
    *at = static_cast<char>('0' + n);
    return at + 1;
  }
  if (n < 100) {
    std::memcpy(at, kPairs + 2 * n, 2);
    return at + 2;
  }
  char text[20];
  const char* first = digits_before(text + sizeof text, n);
  const auto length = static_cast<size_t>(text + sizeof text - first);
  std::memcpy(at, first, length);
  return at + length;
}

// The most a value takes that fixed_real writes: a sign, ten digits, the point, six decimals.
constexpr size_t kFixedRoom = 18;

// "%f": six decimals, exactly as the C library writes them, for a value whose millionths are
// an integer to well within the rounding margin; written from at on, returning where it
// ends, or null for every other value (and NaN, infinities, large values). Where adding a
// half and cutting does not round to the nearest integer, the value lies halfway between two
// and fails the margin anyway.
char* fixed_real(char* at, double value) {
  const double magnitude = std::fabs(value);
  uint64_t units = 0;
  uint32_t decimals = 0;
  // Whole numbers, the commonest operands, need no rounding at all.
  if (magnitude < 1e9 && static_cast<double>(static_cast<uint32_t>(magnitude)) == magnitude) {
    units = static_cast<uint32_t>(magnitude);
  } else {
    const double millionths = magnitude * 1e6;
    if (!(millionths < 1e12)) return nullptr;
    const auto whole = static_cast<uint64_t>(millionths + 0.5);
    if (!(std::fabs(millionths - static_cast<double>(whole)) < 1e-3)) return nullptr;
    units = whole / 1000000;
    decimals = static_cast<uint32_t>(whole % 1000000);
  }
  if (std::signbit(value)) *at++ = '-';
  at = integer_digits(at, units);
  *at = '.';
  std::memcpy(at + 1, kPairs + 2 * (decimals / 10000), 2);
  std::memcpy(at + 3, kPairs + 2 * (decimals / 100 % 100), 2);
  std::memcpy(at + 5, kPairs + 2 * (decimals % 100), 2);
  return at + 7;
}

}  // namespace

void Output::put_integer(long long value) {
  char* at = room(24);
  advance(static_cast<size_t>(std::to_chars(at, at + 24, value).ptr - at));
}

void Output::put_real(double value) {
  char* const at = room(kFixedRoom);
  if (const char* end = fixed_real(at, value)) {
    advance(static_cast<size_t>(end - at));
  } else {
    put_real_by_library(value);
  }
}

// Values far from an integer number of millionths, and NaN, infinities and large values.
void Output::put_real_by_library(double value) {
  char text[32];
  const int length = std::snprintf(text, sizeof text, "%f", value);
  if (length >= 0 && static_cast<size_t>(length) < sizeof text) {
    put({text, static_cast<size_t>(length)});
    return;
  }
  std::vector<char> long_text(static_cast<size_t>(length) + 1);
  std::snprintf(long_text.data(), long_text.size(), "%f", value);
  put({long_text.data(), static_cast<size_t>(length)});
}

void Output::reals_line(const double* values, size_t count, std::string_view op) {
  for (size_t i = 0; i < count; ++i) {
    put_real(values[i]);
    put_char(' ');
  }
  line(op);
}

void Output::integers_line(const int* values, size_t count, std::string_view op) {
  for (size_t i = 0; i < count; ++i) {
    put_integer(values[i]);
    put_char(' ');
  }
  line(op);
}

// Formats %f, %d, %s and %% itself; a format with any other conversion goes through the C
// library instead, from a copy of the arguments taken before any was read.
void Output::printf(const char* format, ...) {
  va_list args;
  va_start(args, format);
  va_list again;
  va_copy(again, args);
  const size_t start = used;
  bool simple = true;
  for (const char* p = format; simple && *p; ++p) {
    if (*p != '%') {
      const char* literal_end = std::strchr(p, '%');
      if (!literal_end) literal_end = p + std::strlen(p);
      put({p, static_cast<size_t>(literal_end - p)});
      p = literal_end - 1;
      continue;
    }
    switch (*++p) {
      case 'f':
        put_real(va_arg(args, double));
        break;
      case 'd':
        put_integer(va_arg(args, int));
        break;
      case 's':
        put(va_arg(args, const char*));
        break;
      case '%':
        put_char('%');
        break;
      default:
        simple = false;
        break;
    }
  }
  if (!simple) {
    used = start;
    vprintf_fallback(format, again);
  }
  va_end(again);
  va_end(args);
  flush_if_full();
}

void Output::vprintf_fallback(const char* format, va_list args) {
  va_list again;
  va_copy(again, args);
  const int length = std::vsnprintf(nullptr, 0, format, args);
  if (length < 0) {
    va_end(again);
    fail("output format error\n");
  }
  const auto n = static_cast<size_t>(length);
  // vsnprintf ends what it writes with a NUL, which the next write covers.
  std::vsnprintf(room(n + 1), n + 1, format, again);
  advance(n);
  va_end(again);
}

// A pipe holds 64 KiB unless asked for more: a large document written into it would wait
// for its reader every 64 KiB. With a megabyte (the most Linux grants without privileges)
// 40 MB went through in half the time. A pipe that keeps its size is written all the same.
void Output::widen_pipe() {
  pipe_checked = true;
#if defined(F_SETPIPE_SZ)
  constexpr int kPipeBytes = 1 << 20;
  struct stat status;
  if (::fstat(fd, &status) == 0 && S_ISFIFO(status.st_mode)) ::fcntl(fd, F_SETPIPE_SZ, kPipeBytes);
#endif
}

// One writev for all pieces, as many times as the descriptor takes part of them.
void Output::flush() {
  if (fd < 0) return;
  close_buffered_piece();
  chunks.clear();
  size_t bytes = 0;
  for (const Piece& piece : pieces) {
    const char* base = piece.kept ? piece.kept : storage.get() + piece.from;
    chunks.push_back({const_cast<char*>(base), piece.length});
    bytes += piece.length;
  }
  if (!pipe_checked && bytes > kFlushSize) widen_pipe();
  size_t next = 0;
  while (next < chunks.size()) {
    const int count = static_cast<int>(std::min<size_t>(chunks.size() - next, IOV_MAX));
    ssize_t written = ::writev(fd, &chunks[next], count);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) {
      throw Error("output write error\n", written < 0 ? std::strerror(errno) : "nothing written");
    }
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
  used = 0;
  buffered_from = 0;
}
