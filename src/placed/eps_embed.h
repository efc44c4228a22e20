// What "-keep" embeds of a new EPS file in place of old embedded art: its PostScript, from
// "%!PS-Adobe" through its last "%%EOF" and the line end right after it, with a DOS EPS
// binary header and the preview it points to left out. Each file is read once, however
// many blocks embed it.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

// The PostScript of an EPS file's bytes; nothing when they hold no "%!PS-Adobe". Without a
// "%%EOF" it runs to the end of the PostScript section.
std::optional<std::string_view> eps_postscript(std::string_view file);

class EMBEDDED_FILES {
 public:
  // A file larger than this is refused with "embedded EPS file too large: PATH".
  static constexpr size_t kMaxBytes = size_t{256} << 20;

  // The PostScript of the EPS file at path, valid while this object lives; nothing when the
  // file cannot be opened or read, is not a regular file, or holds no PostScript.
  std::optional<std::string_view> postscript(const std::string& path);

 private:
  std::map<std::string, std::optional<std::string>> files;
};
