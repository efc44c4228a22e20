#include "placed/epsf_info.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>
#include <cstring>
#include <string_view>

#include "support/numbers.h"

namespace {

constexpr char kKey[] = "HiResBoundingBox: ";
constexpr size_t kKeyLength = sizeof kKey - 1;
constexpr size_t kChunkSize = 1 << 16;

// Up to size bytes of the file; 0 at its end. A read error ends the file like its end does.
size_t read_chunk(int fd, std::string& chunk, size_t keep, size_t size) {
  chunk.resize(keep + size);
  for (;;) {
    const ssize_t got = ::read(fd, &chunk[keep], size);
    if (got < 0 && errno == EINTR) continue;
    const size_t n = got < 0 ? 0 : static_cast<size_t>(got);
    chunk.resize(keep + n);
    return n;
  }
}

// Reads up to the first place the key stands and leaves in after the bytes of that read
// that follow the key. Each read keeps the last kKeyLength - 1 bytes of the one before, so
// a key across two reads is found too.
bool find_key(int fd, std::string& after) {
  std::string window;
  for (;;) {
    if (read_chunk(fd, window, window.size(), kChunkSize) == 0) return false;
    const void* found = memmem(window.data(), window.size(), kKey, kKeyLength);
    if (found) {
      const size_t key_at = static_cast<size_t>(static_cast<const char*>(found) - window.data());
      after.assign(window, key_at + kKeyLength, std::string::npos);
      return true;
    }
    if (window.size() >= kKeyLength) window.erase(0, window.size() - (kKeyLength - 1));
  }
}

// Appends bytes up to the first line end to line; true when a line end was met. A NUL byte
// ends the line too: the words are read as a C string would hold them.
bool append_line(std::string& line, std::string_view bytes) {
  static constexpr char kLineEnds[] = "\r\n";
  const size_t end = bytes.find_first_of(std::string_view(kLineEnds, sizeof kLineEnds));
  line.append(bytes.substr(0, end));
  return end != std::string_view::npos;
}

}  // namespace

int EPSF_INFO::analyze() {
  if (path.find('\0') != std::string::npos) return 1;
  const int fd = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (fd < 0) return 1;
  // A FIFO, a device or a directory must never block or feed the search forever.
  struct stat status;
  int result = 1;
  if (fstat(fd, &status) == 0 && S_ISREG(status.st_mode)) result = set_HiResBoundingBox(fd);
  ::close(fd);
  return result;
}

int EPSF_INFO::set_HiResBoundingBox(int fd) {
  std::string bytes;
  if (!find_key(fd, bytes)) return 1;
  std::string line;
  while (!append_line(line, bytes)) {
    if (read_chunk(fd, bytes, 0, kChunkSize) == 0) break;
  }
  double* const fields[] = {&hires_bbox.llx, &hires_bbox.lly, &hires_bbox.urx, &hires_bbox.ury};
  size_t count = 0;
  size_t word = line.find_first_not_of(' ');
  while (count < 4 && word != std::string::npos) {
    const size_t end = line.find(' ', word);
    *fields[count++] = to_double(line.substr(word, end - word).c_str());
    word = line.find_first_not_of(' ', end);
  }
  return count == 4 ? 0 : 1;
}
