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

// Whether the format uses only the conversions %f, %d, %s and %%, which printf formats
// itself; any other goes through the C library.
bool simple_format(const char* format) {
  for (const char* p = format; *p; ++p) {
    if (*p != '%') continue;
    ++p;
    if (*p != 'f' && *p != 'd' && *p != 's' && *p != '%') return false;
  }
  return true;
}

void append_integer(std::string& out, long long value) {
  char digits[24];
  auto result = std::to_chars(digits, digits + sizeof digits, value);
  out.append(digits, result.ptr);
}

// "%f": six decimals, exactly as the C library writes them. A value whose millionths are
// an integer to well within the rounding margin is written from that integer; every other
// value (and NaN, infinities, large values) goes through the C library.
void append_real(std::string& out, double value) {
  const double millionths = std::fabs(value) * 1e6;
  if (millionths < 1e12) {
    const long long whole = std::llround(millionths);
    if (std::fabs(millionths - static_cast<double>(whole)) < 1e-3) {
      if (std::signbit(value)) out += '-';
      append_integer(out, whole / 1000000);
      char fraction[7] = {'.'};
      long long rest = whole % 1000000;
      for (int i = 6; i >= 1; --i, rest /= 10) fraction[i] = static_cast<char>('0' + rest % 10);
      out.append(fraction, sizeof fraction);
      return;
    }
  }
  char text[32];
  int length = std::snprintf(text, sizeof text, "%f", value);
  if (length >= 0 && static_cast<size_t>(length) < sizeof text) {
    out.append(text, static_cast<size_t>(length));
    return;
  }
  std::vector<char> long_text(static_cast<size_t>(length) + 1);
  std::snprintf(long_text.data(), long_text.size(), "%f", value);
  out.append(long_text.data(), static_cast<size_t>(length));
}

}  // namespace

void Output::printf(const char* format, ...) {
  va_list args;
  va_start(args, format);
  if (simple_format(format)) {
    for (const char* p = format; *p; ++p) {
      if (*p != '%') {
        const char* literal_end = std::strchr(p, '%');
        if (!literal_end) literal_end = p + std::strlen(p);
        buffer.append(p, static_cast<size_t>(literal_end - p));
        p = literal_end - 1;
        continue;
      }
      switch (*++p) {
        case 'f':
          append_real(buffer, va_arg(args, double));
          break;
        case 'd':
          append_integer(buffer, va_arg(args, int));
          break;
        case 's':
          buffer.append(va_arg(args, const char*));
          break;
        default:
          buffer += '%';
          break;
      }
    }
  } else {
    vprintf_fallback(format, args);
  }
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
