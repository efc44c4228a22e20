#include "placed/art_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>
#include <cstring>

namespace {

// Reads up to size bytes; false on a read error, with the system's reason.
bool read_up_to(int fd, std::string& bytes, size_t size, std::string& why) {
  bytes.resize(size);
  size_t done = 0;
  while (done < size) {
    const ssize_t got = ::read(fd, &bytes[done], size - done);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) {
      why = std::strerror(errno);
      return false;
    }
    if (got == 0) break;
    done += static_cast<size_t>(got);
  }
  bytes.resize(done);
  return true;
}

}  // namespace

std::optional<std::string> read_art_file(const std::string& path, size_t limit, std::string& why,
                                         bool* too_large) {
  if (path.find('\0') != std::string::npos) {
    why = "a NUL in the name";
    return std::nullopt;
  }
  const int fd = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (fd < 0) {
    why = std::strerror(errno);
    return std::nullopt;
  }
  struct stat status;
  std::optional<std::string> bytes;
  if (fstat(fd, &status) != 0) {
    why = std::strerror(errno);
  } else if (!S_ISREG(status.st_mode)) {
    why = S_ISDIR(status.st_mode) ? "a folder" : "not a regular file";
  } else {
    const size_t size = static_cast<size_t>(status.st_size);
    if (too_large) *too_large = size > limit;
    bytes.emplace();
    if (!read_up_to(fd, *bytes, size < limit ? size : limit, why)) bytes.reset();
  }
  ::close(fd);
  return bytes;
}
