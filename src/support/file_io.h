// Reads whole files into memory: the template, the tables and the EPS files.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// The most a file may hold whose size is not known in advance (a pipe, a device): reading
// stops there, so an endless stream ends the run rather than filling memory.
constexpr size_t kMaxStreamBytes = size_t{4} << 30;

// Returns the file's bytes. Reads to the end also when the size is not known in advance
// (a pipe given as a path), up to limit bytes ("PATH: more than N bytes, ..." past it).
// Throws Error with open_error or read_error when the file cannot be opened or read, and
// "fstat error\n" when its status cannot be read, the file and the system's reason as the
// Error's reason().
std::string read_whole_file(const char* path, const char* open_error, const char* read_error,
                            size_t limit = kMaxStreamBytes);

// A file's bytes, read only. A regular file is mapped rather than copied, which saves a
// large template a copy into fresh memory; any other file, and bytes given in memory, are
// kept in a string.
class FileBytes {
 public:
  // Same errors as read_whole_file.
  static FileBytes read(const char* path, const char* open_error, const char* read_error);

  explicit FileBytes(std::string bytes) : copy(std::move(bytes)) {}
  FileBytes(FileBytes&& other) noexcept;
  FileBytes& operator=(FileBytes&& other) noexcept;
  ~FileBytes();

  std::string_view view() const {
    return mapped ? std::string_view(mapped, mapped_size) : std::string_view(copy);
  }

 private:
  FileBytes() = default;
  void unmap();

  const char* mapped = nullptr;
  size_t mapped_size = 0;
  std::string copy;
};
