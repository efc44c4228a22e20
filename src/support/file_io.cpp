#include "support/file_io.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>

#include "driver/diagnostics.h"

namespace {

// Closes the descriptor on every way out, errors included.
struct FileCloser {
  int fd;
  ~FileCloser() { ::close(fd); }
};

}  // namespace

std::string read_whole_file(const char* path, const char* open_error, const char* read_error) {
  int fd = ::open(path, O_RDONLY | O_CLOEXEC);
  if (fd < 0) fail("%s", open_error);
  FileCloser closer{fd};
  struct stat status;
  if (::fstat(fd, &status) != 0) fail("fstat error\n");
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
