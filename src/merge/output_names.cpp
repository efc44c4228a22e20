#include "merge/output_names.h"

#include <limits.h>

#include "support/error.h"
#include "support/numbers.h"
#include "support/settings.h"

namespace {

// A row or column: decimal digits alone, from 1.
bool read_index(const std::string& text, long long* value) {
  return read_decimal(text, LLONG_MAX, value) && *value > 0;
}

// "ID-row-column": the identifier is everything before the last two dashes.
bool read_cell(const std::string& inside, std::string* id, long long* row, long long* col) {
  const size_t col_dash = inside.rfind('-');
  if (col_dash == std::string::npos || col_dash == 0) return false;
  const size_t row_dash = inside.rfind('-', col_dash - 1);
  if (row_dash == std::string::npos) return false;
  *id = inside.substr(0, row_dash);
  return read_index(inside.substr(row_dash + 1, col_dash - row_dash - 1), row) &&
         read_index(inside.substr(col_dash + 1), col);
}

// Every part of the name between slashes must fit a directory entry, and the whole a path.
bool fits(const std::string& name) {
  if (name.size() >= PATH_MAX) return false;
  size_t start = 0;
  for (size_t slash; (slash = name.find('/', start)) != std::string::npos; start = slash + 1) {
    if (slash - start > NAME_MAX) return false;
  }
  return name.size() - start <= NAME_MAX;
}

// The names Windows keeps for devices, whatever their case and extension.
bool reserved_on_windows(const std::string& part) {
  std::string stem = part.substr(0, part.find('.'));
  while (!stem.empty() && stem.back() == ' ') stem.pop_back();
  for (char& c : stem) c = static_cast<char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
  if (stem == "CON" || stem == "PRN" || stem == "AUX" || stem == "NUL") return true;
  return stem.size() == 4 && (stem.compare(0, 3, "COM") == 0 || stem.compare(0, 3, "LPT") == 0) &&
         stem[3] >= '1' && stem[3] <= '9';
}

// A part of a path that Windows and Mac shares take as it is: not a device's name, and
// not ending in a space or a dot (which Windows drops).
std::string portable_part(std::string part) {
  if (part == "." || part == ".." || part.empty()) return part;
  if (reserved_on_windows(part)) part.insert(0, "_");
  if (part.back() == ' ' || part.back() == '.') part.back() = '_';
  return part;
}

std::string portable_path(const std::string& name) {
  std::string portable;
  size_t start = 0;
  for (size_t slash; (slash = name.find('/', start)) != std::string::npos; start = slash + 1) {
    portable += portable_part(name.substr(start, slash - start)) + "/";
  }
  return portable + portable_part(name.substr(start));
}

}  // namespace

std::string safe_name_part(const std::string& text, bool at_part_start) {
  std::string safe = text;
  for (char& c : safe) {
    const unsigned char byte = static_cast<unsigned char>(c);
    if (byte < 0x20 || byte == 0x7F ||
        std::string_view("/<>:\"\\|?*").find(c) != std::string_view::npos) {
      c = '_';
    }
  }
  if (at_part_start && !safe.empty() && safe[0] == '.') safe[0] = '_';
  return safe;
}

std::string case_folded(const std::string& name) {
  std::string folded = name;
  for (size_t i = 0; i < folded.size(); ++i) {
    char& c = folded[i];
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    // Latin-1 capitals in UTF-8 (U+00C0 to U+00DE, but U+00D7): the letters of most
    // product names that are not ASCII.
    const auto next = i + 1 < folded.size() ? static_cast<unsigned char>(folded[i + 1]) : 0;
    if (static_cast<unsigned char>(c) == 0xC3 && next >= 0x80 && next <= 0x9E && next != 0x97) {
      folded[++i] = static_cast<char>(next + 0x20);
    }
  }
  return folded;
}

bool NAME_PATTERN::parse(const std::string& pattern, const std::vector<std::string>& ids,
                         bool generic, std::string* problem) {
  parts.clear();
  for (size_t i = 0; i < pattern.size();) {
    if (pattern[i] == '#') {
      size_t end = pattern.find_first_not_of('#', i);
      if (end == std::string::npos) end = pattern.size();
      parts.push_back({PART::KIND::number, "", end - i});
      i = end;
      continue;
    }
    if (pattern[i] == '{') {
      const size_t close = pattern.find('}', i);
      const std::string written =
          pattern.substr(i, close == std::string::npos ? close : close + 1 - i);
      PART cell{PART::KIND::cell, written};
      std::string id;
      if (close == std::string::npos ||
          !read_cell(written.substr(1, written.size() - 2), &id, &cell.row, &cell.col)) {
        *problem = "\"" + written + "\" names no cell (ID-row-column)";
        return false;
      }
      size_t table = 0;
      while (!generic && table < ids.size() && ids[table] != id) ++table;
      if (table == ids.size()) {
        *problem = "no table argument has the identifier " + id;
        return false;
      }
      cell.table = table;
      parts.push_back(cell);
      i = close + 1;
      continue;
    }
    const size_t end = pattern.find_first_of("#{", i);
    const std::string text = pattern.substr(i, end == std::string::npos ? end : end - i);
    if (!parts.empty() && parts.back().kind == PART::KIND::text) {
      parts.back().text += text;
    } else {
      parts.push_back({PART::KIND::text, text});
    }
    i = end == std::string::npos ? pattern.size() : end;
  }
  return true;
}

std::string NAME_PATTERN::name(long long number, const CELL_TEXT& cell_text) const {
  std::string name;
  for (const PART& part : parts) {
    if (part.kind == PART::KIND::text) {
      name += part.text;
    } else if (part.kind == PART::KIND::number) {
      const std::string digits = std::to_string(number);
      if (digits.size() < part.width) name.append(part.width - digits.size(), '0');
      name += digits;
    } else {
      const std::optional<std::string> text = cell_text(part.table, part.row, part.col);
      if (!text || text->empty()) {
        fail("document %lld: no file name: the cell %s is empty\n", number, part.text.c_str());
      }
      name += safe_name_part(*text, name.empty() || name.back() == '/');
    }
  }
  name = portable_path(name);
  if (!fits(name)) fail("document %lld: file name too long: %s\n", number, name.c_str());
  return name;
}

std::optional<std::string> book_name(const std::string& pattern, const SETTINGS& settings,
                                     std::string* problem) {
  static constexpr char kShard[] = "{shard}";
  std::string name = pattern;
  const size_t shard_at = name.find(kShard);
  if (settings.shards > 0 && shard_at != std::string::npos) {
    name.replace(shard_at, sizeof kShard - 1, std::to_string(settings.shard));
  }
  if (settings.form != OUTPUT_FORM::pdf || name.find_first_of("#{") != std::string::npos) {
    return std::nullopt;
  }
  if (settings.shards > 0 && shard_at == std::string::npos) {
    *problem = "every shard would write this PDF: put {shard} in its name";
    return std::nullopt;
  }
  return name;
}
