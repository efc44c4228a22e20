#include "support/output.h"

#include <unistd.h>
#include <cerrno>
#include <cstdarg>
#include <cstdio>

#include "driver/diagnostics.h"

void Output::write(std::string_view bytes) {
  buffer.append(bytes);
  flush_if_full();
}

void Output::line(std::string_view text) {
  buffer.append(text);
  buffer.push_back('\r');
  flush_if_full();
}

void Output::printf(const char* format, ...) {
  char small[256];
  va_list args;
  va_start(args, format);
  va_list again;
  va_copy(again, args);
  int length = std::vsnprintf(small, sizeof small, format, args);
  va_end(args);
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
  flush_if_full();
}

void Output::flush_if_full() {
  if (fd >= 0 && buffer.size() >= kFlushSize) flush();
}

void Output::flush() {
  if (fd < 0) return;
  const char* p = buffer.data();
  size_t left = buffer.size();
  while (left > 0) {
    ssize_t written = ::write(fd, p, left);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) fail("output write error\n");
    p += written;
    left -= static_cast<size_t>(written);
  }
  buffer.clear();
}
