#include "placed/eps_embed.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>
#include <cstdint>

#include "support/error.h"
namespace {

uint32_t little_endian(std::string_view bytes, size_t at) {
  uint32_t value = 0;
  for (size_t i = 4; i-- > 0;) value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
  return value;
}

// The PostScript section of a DOS EPS file (its header gives offset and length); the whole
// file otherwise, and when the header points outside the file.
std::string_view postscript_section(std::string_view file) {
  if (file.size() < 12 || file.substr(0, 4) != "\xC5\xD0\xD3\xC6") return file;
  const size_t offset = little_endian(file, 4);
  const size_t length = little_endian(file, 8);
  if (offset > file.size() || length > file.size() - offset) return file;
  return file.substr(offset, length);
}

// The file's bytes; nothing when it cannot be read whole. A FIFO or a device never blocks.
std::optional<std::string> read_regular_file(const std::string& path) {
  if (path.find('\0') != std::string::npos) return std::nullopt;
  const int fd = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (fd < 0) return std::nullopt;
  struct stat status;
  std::optional<std::string> bytes;
  if (fstat(fd, &status) == 0 && S_ISREG(status.st_mode)) {
    if (static_cast<unsigned long long>(status.st_size) > EMBEDDED_FILES::kMaxBytes) {
      ::close(fd);
      fail("embedded EPS file too large: %s\n", path.c_str());
    }
    bytes.emplace(static_cast<size_t>(status.st_size), '\0');
    size_t done = 0;
    while (done < bytes->size()) {
      const ssize_t got = ::read(fd, &(*bytes)[done], bytes->size() - done);
      if (got < 0 && errno == EINTR) continue;
      if (got <= 0) break;
      done += static_cast<size_t>(got);
    }
    if (done != bytes->size()) bytes.reset();  // a read error, or a file that shrank
  }
  ::close(fd);
  return bytes;
}

}  // namespace

std::optional<std::string_view> eps_postscript(std::string_view file) {
  const std::string_view section = postscript_section(file);
  const size_t start = section.find("%!PS-Adobe");
  if (start == std::string_view::npos) return std::nullopt;
  const size_t eof = section.rfind("%%EOF");
  if (eof == std::string_view::npos || eof < start) return section.substr(start);
  // What follows "%%EOF" on its line (a ^D, say) would end the job that embeds it.
  size_t end = eof + 5;
  if (section.compare(end, 2, "\r\n") == 0) {
    end += 2;
  } else if (end < section.size() && (section[end] == '\r' || section[end] == '\n')) {
    ++end;
  }
  return section.substr(start, end - start);
}

std::optional<std::string_view> EMBEDDED_FILES::postscript(const std::string& path) {
  auto found = files.find(path);
  if (found == files.end()) found = files.emplace(path, read_regular_file(path)).first;
  if (!found->second) return std::nullopt;
  return eps_postscript(*found->second);
}
