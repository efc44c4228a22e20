#include "support/strings.h"

#include <algorithm>

#include "support/error.h"

void MY_STRING::cat(std::optional<std::string>& head, const char* tail) {
  if (!tail) return;
  if (head) {
    head->append(tail);
  } else {
    head.emplace(tail);
  }
}

namespace {

void replace_into(std::string& out, std::string_view text, std::string_view from,
                  std::string_view to) {
  if (from.empty()) aborterr("MY_STRING", "replace( char*, char*, char* )", "empty search text");
  out.clear();
  out.reserve(text.size());
  size_t start = 0;
  for (size_t found; (found = text.find(from, start)) != std::string_view::npos;
       start = found + from.size()) {
    out.append(text, start, found - start);
    out.append(to);
  }
  out.append(text, start, std::string_view::npos);
}

}  // namespace

std::string MY_STRING::replace(std::string_view text, std::string_view from, std::string_view to) {
  std::string out;
  replace_into(out, text, from, to);
  return out;
}

void MY_STRING::replace_in(std::string& text, std::string_view from, std::string_view to,
                           std::string& room) {
  replace_into(room, text, from, to);
  text.swap(room);
}

std::string_view MY_STRING::next_digits(std::string_view text, size_t* from) {
  static constexpr std::string_view kDigits = "0123456789";
  const size_t start = text.find_first_of(kDigits, *from);
  if (start == std::string_view::npos) {
    *from = text.size();
    return {};
  }
  const size_t end = std::min(text.find_first_not_of(kDigits, start), text.size());
  *from = end;
  return text.substr(start, end - start);
}

void MY_STRING::split(std::string_view delimiter, std::string_view text) {
  delim = delimiter;
  rest = text;
}

std::string_view MY_STRING::split(int* more) {
  size_t found = delim.empty() ? std::string_view::npos : rest.find(delim);
  if (found == std::string_view::npos) {
    *more = 0;
    return rest;
  }
  std::string_view piece = rest.substr(0, found);
  rest.remove_prefix(found + delim.size());
  *more = 1;
  return piece;
}
