#include "support/file_io.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "support/error.h"

namespace {

// Closes the descriptor on every way out, errors included.
struct FileCloser {
  int fd;
  ~FileCloser() { ::close(fd); }
};

[[noreturn]] void fail_on(const char* message, const char* doing, const char* path) {
  throw Error(message, std::string("cannot ") + doing + " " + path + ": " + std::strerror(errno));
}

int open_file(const char* path, const char* open_error, struct stat* status) {
  int fd = ::open(path, O_RDONLY | O_CLOEXEC);
  if (fd < 0) fail_on(open_error, "open", path);
  if (::fstat(fd, status) != 0) {
    const int error = errno;
    ::close(fd);
    errno = error;
    fail_on("fstat error\n", "read the status of", path);
  }
  return fd;
}

// A mapped file that shrinks under the run would otherwise end it with a signal and no word.
const char* bus_error_message = "";
void on_bus_error(int) {
  if (::write(STDERR_FILENO, bus_error_message, std::strlen(bus_error_message)) < 0) {
    _exit(kFailureStatus);
  }
  _exit(kFailureStatus);
}

// A regular file is read up to its size and a little past it (it may grow while it is
// read); anything else up to the limit.
std::string read_open_file(int fd, const struct stat& status, const char* path,
                           const char* read_error, size_t limit) {
  const size_t size = status.st_size > 0 ? static_cast<size_t>(status.st_size) : 0;
  std::string bytes;
  bytes.resize(std::min(size, limit) + 1);
  size_t used = 0;
  for (;;) {
    if (used == bytes.size()) {
      if (used > limit) {
        fail("%s: more than %zu bytes, more than a template or table may hold\n", path, limit);
      }
      bytes.resize(std::min(bytes.size() * 2, limit + 1));
    }
    ssize_t got = ::read(fd, &bytes[used], bytes.size() - used);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) fail_on(read_error, "read", path);
    if (got == 0) break;
    used += static_cast<size_t>(got);
  }
  bytes.resize(used);
  return bytes;
}

}  // namespace

std::string read_whole_file(const char* path, const char* open_error, const char* read_error,
                            size_t limit) {
  struct stat status;
  FileCloser closer{open_file(path, open_error, &status)};
  return read_open_file(closer.fd, status, path, read_error, limit);
}

FileBytes FileBytes::read(const char* path, const char* open_error, const char* read_error) {
  struct stat status;
  FileCloser closer{open_file(path, open_error, &status)};
  FileBytes bytes;
  if (S_ISREG(status.st_mode) && status.st_size > 0) {
    const size_t size = static_cast<size_t>(status.st_size);
    // Every byte is read: the pages are mapped in one go rather than one fault at a time.
    void* map = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE | MAP_POPULATE, closer.fd, 0);
    if (map != MAP_FAILED) {
      bus_error_message = read_error;
      struct sigaction action = {};
      action.sa_handler = on_bus_error;
      ::sigaction(SIGBUS, &action, nullptr);
      bytes.mapped = static_cast<const char*>(map);
      bytes.mapped_size = size;
      return bytes;
    }
  }
  bytes.copy = read_open_file(closer.fd, status, path, read_error, kMaxStreamBytes);
  return bytes;
}

FileBytes::FileBytes(FileBytes&& other) noexcept
    : mapped(std::exchange(other.mapped, nullptr)),
      mapped_size(std::exchange(other.mapped_size, 0)),
      copy(std::move(other.copy)) {}

FileBytes& FileBytes::operator=(FileBytes&& other) noexcept {
  if (this != &other) {
    unmap();
    mapped = std::exchange(other.mapped, nullptr);
    mapped_size = std::exchange(other.mapped_size, 0);
    copy = std::move(other.copy);
  }
  return *this;
}

FileBytes::~FileBytes() {
  unmap();
}

void FileBytes::unmap() {
  if (mapped) ::munmap(const_cast<char*>(mapped), mapped_size);
  mapped = nullptr;
}
