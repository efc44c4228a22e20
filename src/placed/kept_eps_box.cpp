#include "placed/kept_eps_box.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "placed/art_file.h"
#include "placed/eps_embed.h"

namespace {

constexpr std::string_view kKey = "%%BoundingBox:";

// Four numbers after the key, on its line; nothing for "(atend)" and anything else.
std::optional<EPS_BBOX> box_numbers(std::string_view text, size_t key_at) {
  const size_t start = key_at + kKey.size();
  const size_t end = text.find_first_of("\r\n", start);
  const std::string line(text.substr(start, end == std::string_view::npos ? end : end - start));
  double numbers[4];
  const char* at = line.c_str();
  for (double& number : numbers) {
    char* after = nullptr;
    number = std::strtod(at, &after);
    if (after == at) return std::nullopt;
    at = after;
  }
  return EPS_BBOX{numbers[0], numbers[1], numbers[2], numbers[3]};
}

// The box of the first %%BoundingBox comment at a line start; when it says "(atend)", of the
// last one, in the trailer.
std::optional<EPS_BBOX> bounding_box(std::string_view postscript) {
  size_t first = std::string_view::npos;
  for (size_t at = postscript.find(kKey); at != std::string_view::npos;
       at = postscript.find(kKey, at + 1)) {
    if (at == 0 || postscript[at - 1] == '\r' || postscript[at - 1] == '\n') {
      first = at;
      break;
    }
  }
  if (first == std::string_view::npos) return std::nullopt;
  if (std::optional<EPS_BBOX> box = box_numbers(postscript, first)) return box;
  const size_t last = postscript.rfind(kKey);
  return last == first ? std::nullopt : box_numbers(postscript, last);
}

}  // namespace

std::optional<EPS_BBOX> kept_eps_box(const std::string& path, std::string& why) {
  EPSF_INFO info(path);
  if (info.analyze() == 0) return info.get_HiResBoundingBox();
  std::string reason;
  bool too_large = false;
  const std::optional<std::string> bytes =
      read_art_file(path, EMBEDDED_FILES::kMaxBytes, reason, &too_large);
  if (!bytes) {
    // A missing file keeps the words the report always had for it.
    why =
        reason == std::strerror(ENOENT) ? "file not found" : "cannot read " + path + ": " + reason;
    return std::nullopt;
  }
  const std::optional<std::string_view> postscript = eps_postscript(*bytes);
  if (!postscript) {
    why = "not an EPS file: " + path;
    return std::nullopt;
  }
  std::optional<EPS_BBOX> box = bounding_box(*postscript);
  if (!box) why = "no bounding box: " + path;
  return box;
}
