// The one buffered writer of the new document. It either writes to a file descriptor as
// its buffer fills or keeps everything in memory (tests, fuzzing). A failed write is an
// Error, so a full disk never passes for success.
#pragma once

#include <sys/uio.h>

#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <string_view>
#include <vector>

class Output {
 public:
  // Collects the whole document in memory; see text().
  Output() = default;
  // Writes to fd whenever the buffer is full and on flush().
  explicit Output(int descriptor) : fd(descriptor) {}
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  void write(std::string_view bytes) {
    put(bytes);
    flush_if_full();
  }
  // Bytes that stay valid and unchanged until the next flush, such as the template's own
  // lines: they are queued by reference rather than copied.
  void write_kept(std::string_view bytes);
  // The text and a carriage return: how every line of the document ends.
  void line(std::string_view text) {
    put(text);
    put_char('\r');
    flush_if_full();
  }
  // The fixed formats of the operator records, without a format string to read: each number
  // as "%f" (reals) or "%d" (integers) writes it and followed by a blank, then the operator
  // and a carriage return ("0.500000 g\r", "1 0 Tk\r").
  void reals_line(const double* values, size_t count, std::string_view op);
  void integers_line(const int* values, size_t count, std::string_view op);
  void reals_line(std::initializer_list<double> values, std::string_view op) {
    reals_line(values.begin(), values.size(), op);
  }
  void integers_line(std::initializer_list<int> values, std::string_view op) {
    integers_line(values.begin(), values.size(), op);
  }
  void printf(const char* format, ...) __attribute__((format(printf, 2, 3)));
  // Writes what is buffered and queued; throws Error("output write error\n") when it cannot.
  void flush();

  // What is buffered: in memory, the whole document written so far.
  std::string_view text() const { return {storage.get(), used}; }

 private:
  static constexpr size_t kFlushSize = 1 << 16;
  static constexpr size_t kMaxPieces = 512;
  static constexpr size_t kFirstRoom = 4096;

  // Where n more bytes may be written into the buffer; bytes written there count once
  // advance(n) says so.
  char* room(size_t n) {
    if (n > capacity - used) grow(n);
    return storage.get() + used;
  }
  void advance(size_t n) { used += n; }
  void put(std::string_view bytes) {
    if (bytes.empty()) return;
    std::memcpy(room(bytes.size()), bytes.data(), bytes.size());
    used += bytes.size();
  }
  void put_char(char c) {
    *room(1) = c;
    ++used;
  }
  void put_integer(long long value);
  void put_real(double value);
  void put_real_by_library(double value);
  void grow(size_t n);
  void flush_if_full() {
    if (fd >= 0 && (used >= kFlushSize || pieces.size() >= kMaxPieces)) flush();
  }
  void close_buffered_piece();
  void widen_pipe();
  void vprintf_fallback(const char* format, va_list args);

  int fd = -1;
  bool pipe_checked = false;  // whether the first large write looked for a pipe
  // The buffer: capacity bytes of room, of which used are written. The room is not cleared
  // first: one output is made per document, many in a batch.
  std::unique_ptr<char[]> storage;
  size_t capacity = 0;
  size_t used = 0;
  // What the next flush writes, in order: queued bytes, and runs of the buffer (where kept is
  // nullptr and from is an offset into the buffer, which may move as it grows).
  struct Piece {
    const char* kept;
    size_t from;
    size_t length;
  };
  std::vector<Piece> pieces;
  size_t buffered_from = 0;   // where the buffer's bytes not yet in a piece begin
  std::vector<iovec> chunks;  // the pieces as one flush hands them over, kept for the next
};
