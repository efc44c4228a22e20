#include "output/page_box.h"

#include <algorithm>
#include <vector>

#include "support/numbers.h"
#include "support/strings.h"

namespace {

constexpr std::string_view kKeys[] = {"%AI3_Cropmarks:", "%%HiResBoundingBox:", "%%BoundingBox:"};
constexpr std::string_view kLineEnds = "\r\n";

// The lines of the header: every line up to "%%EndComments" or the first that is not a
// comment.
std::vector<std::string_view> header_lines(std::string_view document) {
  std::vector<std::string_view> lines;
  for (size_t start = 0; start < document.size();) {
    const size_t end = std::min(document.find_first_of(kLineEnds, start), document.size());
    const std::string_view line = document.substr(start, end - start);
    if (!starts_with(line, "%") || starts_with(line, "%%EndComments")) break;
    lines.push_back(line);
    start = document.find_first_not_of(kLineEnds, end);
    if (start == std::string_view::npos) break;
  }
  return lines;
}

// The value after key on the last line of the trailer that begins with it.
std::string_view trailer_value(std::string_view document, std::string_view key) {
  const size_t trailer = document.rfind("%%Trailer");
  if (trailer == std::string_view::npos) return {};
  std::string_view value;
  for (size_t at = document.find(key, trailer); at != std::string_view::npos;
       at = document.find(key, at + 1)) {
    if (kLineEnds.find(document[at - 1]) == std::string_view::npos) continue;
    const size_t end = std::min(document.find_first_of(kLineEnds, at), document.size());
    value = document.substr(at + key.size(), end - at - key.size());
  }
  return value;
}

std::optional<PAGE_BOX> read_box(std::string_view value) {
  double numbers[4];
  size_t count = 0;
  for (size_t word = value.find_first_not_of(" \t"); word != std::string_view::npos;
       word = value.find_first_not_of(" \t", word)) {
    const size_t end = std::min(value.find_first_of(" \t", word), value.size());
    if (count == 4) return std::nullopt;
    const std::string_view text = value.substr(word, end - word);
    if (text.find_first_not_of("+-.0123456789") != std::string_view::npos) return std::nullopt;
    numbers[count++] = to_double(text);
    word = end;
  }
  if (count != 4 || numbers[2] <= numbers[0] || numbers[3] <= numbers[1]) return std::nullopt;
  return PAGE_BOX{numbers[0], numbers[1], numbers[2], numbers[3]};
}

}  // namespace

std::optional<PAGE_BOX> page_box(std::string_view document) {
  const std::vector<std::string_view> header = header_lines(document);
  for (std::string_view key : kKeys) {
    for (std::string_view line : header) {
      if (!starts_with(line, key)) continue;
      std::string_view value = line.substr(key.size());
      if (value.find("(atend)") != std::string_view::npos) value = trailer_value(document, key);
      if (std::optional<PAGE_BOX> box = read_box(value)) return box;
    }
  }
  return std::nullopt;
}
