#include "placed/eps_path.h"

#include <cstdio>

#include "support/escapes.h"

std::string_view basename(std::string_view s) {
  const size_t last = s.find_last_of(":\\");
  return last == std::string_view::npos ? s : s.substr(last + 1);
}

std::string& mb_char_replace(char from, char to, std::string& s) {
  for (size_t i = 0; i < s.size(); ++i) {
    if (static_cast<unsigned char>(s[i]) & 0x80) {
      ++i;
    } else if (s[i] == from) {
      s[i] = to;
    }
  }
  return s;
}

std::string ENCODE::capencode(std::string_view s) {
  std::string out;
  out.reserve(s.size());
  for (size_t i = 0; i < s.size(); ++i) {
    const unsigned char byte = static_cast<unsigned char>(s[i]);
    if ((byte & 0x80) || byte == '/' || (i == 0 && byte == '.')) {
      char hex[4];
      std::snprintf(hex, sizeof hex, ":%02x", byte);
      out += hex;
    } else {
      out += static_cast<char>(byte);
    }
  }
  return out;
}

namespace {

bool has_parent_component(const std::string& tab_separated) {
  size_t start = 0;
  for (;;) {
    const size_t end = tab_separated.find('\t', start);
    if (tab_separated.compare(start, end - start, "..") == 0) return true;
    if (end == std::string::npos) return false;
    start = end + 1;
  }
}

}  // namespace

std::optional<std::string> local_eps_path(std::string_view cell, std::string_view home_dir,
                                          bool string_body) {
  std::string path = string_body ? ps_string_decode(cell) : path_decode(cell);
  // An escaped NUL ends the name, as it would end any file name the system is given.
  if (const size_t nul = path.find('\0'); nul != std::string::npos) path.resize(nul);
  mb_char_replace(':', '\t', path);
  if (has_parent_component(path)) return std::nullopt;
  std::string encoded = ENCODE::capencode(path);
  mb_char_replace('\t', '/', encoded);
  return std::string(home_dir) + encoded;
}
