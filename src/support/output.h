// The one buffered writer of the new document. It either writes to a file descriptor as
// its buffer fills or keeps everything in memory (tests, fuzzing). A failed write is an
// Error, so a full disk never passes for success.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <string>
#include <string_view>

class Output {
 public:
  // Collects the whole document in memory; see text().
  Output() = default;
  // Writes to fd whenever the buffer is full and on flush().
  explicit Output(int descriptor) : fd(descriptor) {}
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  void write(std::string_view bytes);
  // The text and a carriage return: how every line of the document ends.
  void line(std::string_view text);
  void printf(const char* format, ...) __attribute__((format(printf, 2, 3)));
  // Writes what is buffered; throws Error("output write error\n") when it cannot.
  void flush();

  const std::string& text() const { return buffer; }

 private:
  static constexpr size_t kFlushSize = 1 << 16;
  void flush_if_full();
  void vprintf_fallback(const char* format, va_list args);

  int fd = -1;
  std::string buffer;
};
