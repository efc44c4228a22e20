#include "support/file_io.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
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

int open_file(const char* path, const char* open_error, struct stat* status) {
  int fd = ::open(path, O_RDONLY | O_CLOEXEC);
  if (fd < 0) fail("%s", open_error);
  if (::fstat(fd, status) != 0) {
    ::close(fd);
    fail("fstat error\n");
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

std::string read_open_file(int fd, const struct stat& status, const char* read_error) {
  std::string bytes;
  size_t capacity = status.st_size > 0 ? static_cast<size_t>(status.st_size) : 0;
  bytes.resize(capacity + 1);
  size_t used = 0;
  for (;;) {
    if (used == bytes.size()) bytes.resize(bytes.size() * 2);
    ssize_t got = ::read(fd, &bytes[used], bytes.size() - used);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) fail("%s", read_error);
    if (got == 0) break;
    used += static_cast<size_t>(got);
  }
  bytes.resize(used);
  return bytes;
}

}  // namespace

std::string read_whole_file(const char* path, const char* open_error, const char* read_error) {
  struct stat status;
  FileCloser closer{open_file(path, open_error, &status)};
  return read_open_file(closer.fd, status, read_error);
}

FileBytes FileBytes::read(const char* path, const char* open_error, const char* read_error) {
  struct stat status;
  FileCloser closer{open_file(path, open_error, &status)};
  FileBytes bytes;
  if (S_ISREG(status.st_mode) && status.st_size > 0) {
    const size_t size = static_cast<size_t>(status.st_size);
    void* map = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, closer.fd, 0);
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
  bytes.copy = read_open_file(closer.fd, status, read_error);
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
