#include "support/patterns.h"

#include <algorithm>
#include <climits>
#include <map>

#include "support/error.h"
#include "support/numbers.h"
#include "support/regex.h"
#include "support/strings.h"

namespace {

// Every character of the identifier may be followed by one separator.
std::string expand(const char* id, const char* sep) {
  std::string expanded;
  for (const char* c = id; *c; ++c) {
    expanded += *c;
    expanded += sep;
    expanded += '?';
  }
  return expanded;
}

// Fills each "%s" of the template in turn: the first with head, the others with sep.
std::string fill(const char* pattern_template, const std::string& head, const char* sep) {
  std::string out;
  bool first = true;
  for (const char* p = pattern_template; *p; ++p) {
    if (p[0] == '%' && p[1] == 's') {
      out += first ? head : std::string(sep);
      first = false;
      ++p;
    } else {
      out += *p;
    }
  }
  return out;
}

}  // namespace

const char* AI_REGEX_PATTERN::create_pattern(const char* id, const char* sep) {
  if (!sep) {
    pattern = std::string(id) + "-[0-9]+-[0-9]+";
  } else {
    pattern = fill("%s-%s?[0-9]+%s?([0-9]+%s?)*-%s?[0-9]+%s?([0-9]+%s?)*", expand(id, sep), sep);
  }
  return pattern.c_str();
}

const char* AI_REGEX_PATTERN::create_pattern(const char* sep) {
  if (!sep) {
    pattern = "[A-Z]+-[0-9]+-[0-9]+";
  } else {
    pattern =
        fill("[A-Z]%s?([A-Z]+%s?)*-%s?[0-9]+%s?([0-9]+%s?)*-%s?[0-9]+%s?([0-9]+%s?)*", sep, sep);
  }
  return pattern.c_str();
}

const char* AI_REGEX_PATTERN2::create_pattern(const char* id, const char* sep) {
  if (!sep) {
    pattern = std::string(id) + "-[0-9]+-[0-9]+(-([a-zA-Z0-9]|-)*)?_";
  } else {
    pattern =
        fill("%s-%s?[0-9]+%s?([0-9]+%s?)*-%s?[0-9]+%s?([0-9]+%s?)*%s?(-([a-zA-Z0-9]|-|%s)*)?_",
             expand(id, sep), sep);
  }
  return pattern.c_str();
}

const char* AI_REGEX_PATTERN2::create_pattern(const char* sep) {
  if (!sep) {
    pattern = "[A-Z]+-[0-9]+-[0-9]+(-([a-zA-Z0-9]|-)*)?_";
  } else {
    pattern = fill(
        "[A-Z]%s?([A-Z]+%s?)*-%s?[0-9]+%s?([0-9]+%s?)*-%s?[0-9]+%s?([0-9]+%s?)*(-([a-zA-Z0-9]|-|%s)"
        "*)?_",
        sep, sep);
  }
  return pattern.c_str();
}

const char* placeholder_pattern(const char* id, bool with_font) {
  // By syntax, then for any identifier or by identifier; looked up without a key string.
  static std::map<std::string, std::string, std::less<>> built[2][2];
  auto& patterns = built[with_font][id != nullptr];
  const std::string_view key = id ? id : "";
  auto found = patterns.find(key);
  if (found != patterns.end()) return found->second.c_str();
  AI_REGEX_PATTERN plain;
  AI_REGEX_PATTERN2 font;
  const char* pattern;
  if (with_font) {
    pattern = id ? font.create_pattern(id, "\t") : font.create_pattern("\t");
  } else {
    pattern = id ? plain.create_pattern(id, "\t") : plain.create_pattern("\t");
  }
  return patterns.emplace(key, pattern).first->second.c_str();
}

bool holds_plain_placeholder(std::string_view text) {
  auto digit = [&text](size_t i) { return i < text.size() && text[i] >= '0' && text[i] <= '9'; };
  for (size_t dash = text.find('-'); dash != std::string_view::npos;
       dash = text.find('-', dash + 1)) {
    if (dash == 0 || text[dash - 1] < 'A' || text[dash - 1] > 'Z' || !digit(dash + 1)) continue;
    size_t p = dash + 1;
    while (digit(p)) ++p;
    if (p < text.size() && text[p] == '-' && digit(p + 1)) return true;
  }
  return false;
}

namespace {

bool is_upper(char c) {
  return c >= 'A' && c <= 'Z';
}

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

}  // namespace

void PLAIN_PLACEHOLDERS::init_offset(const char* text) {
  subject = text;
  offset = 0;
}

int PLAIN_PLACEHOLDERS::match_next(std::string& out) {
  for (size_t start = offset; start < subject.size();) {
    size_t resume = start + 1;
    const size_t end = match_at(start, &resume);
    if (end != std::string_view::npos) {
      out.assign(subject, start, end - start);
      offset = end;
      return 1;
    }
    start = resume;
  }
  return 0;
}

// Every choice of the pattern is forced: a separator is taken wherever one stands (what
// follows it cannot be one), and each run of letters or digits goes as far as it can (what
// must follow it, a dash, cannot be part of it). So the one match from start, if any, is
// also the longest.
size_t PLAIN_PLACEHOLDERS::match_at(size_t start, size_t* resume) const {
  auto separator = [this](size_t at) { return at < subject.size() && subject[at] == '\t'; };
  auto dash = [this](size_t at) { return at < subject.size() && subject[at] == '-'; };
  size_t at = identifier_end(start, resume);
  for (int number = 0; number < 2; ++number) {
    if (at == std::string_view::npos || !dash(at)) return std::string_view::npos;
    ++at;
    if (separator(at)) ++at;
    at = digits_end(at);
  }
  return at;
}

// With an identifier, its characters, each perhaps followed by a separator. Without one,
// capital letters with single separators between them: a search that fails after such a run
// fails from every letter of it too, so the walk resumes after the run.
size_t PLAIN_PLACEHOLDERS::identifier_end(size_t at, size_t* resume) const {
  const size_t size = subject.size();
  if (id) {
    for (const char* c = id; *c; ++c) {
      if (at == size || subject[at] != *c) return std::string_view::npos;
      ++at;
      if (at < size && subject[at] == '\t') ++at;
    }
    return at;
  }
  if (!is_upper(subject[at])) return std::string_view::npos;
  while (at < size &&
         (is_upper(subject[at]) || (subject[at] == '\t' && is_upper(subject[at - 1])))) {
    ++at;
  }
  *resume = at;
  return at;
}

size_t PLAIN_PLACEHOLDERS::digits_end(size_t at) const {
  const size_t size = subject.size();
  if (at == size || !is_digit(subject[at])) return std::string_view::npos;
  while (at < size &&
         (is_digit(subject[at]) || (subject[at] == '\t' && is_digit(subject[at - 1])))) {
    ++at;
  }
  return at;
}

bool plain_identifier(const char* id) {
  for (const char* c = id; *c; ++c) {
    if (!is_upper(*c) && !is_digit(*c) && !(*c >= 'a' && *c <= 'z')) return false;
  }
  return true;
}

bool holds_two_dashes(std::string_view text) {
  const size_t first = text.find('-');
  return first != std::string_view::npos && text.find('-', first + 1) != std::string_view::npos;
}

bool may_end_placeholder(std::string_view bytes, bool decoded) {
  if (decoded && bytes.find_first_of("\\<") != std::string_view::npos) return true;
  for (size_t p = bytes.find('-'); p != std::string_view::npos; p = bytes.find('-', p + 1)) {
    if (p + 2 >= bytes.size()) return true;
    const char next = bytes[p + 1];
    const char after = bytes[p + 2];
    if ((next >= '0' && next <= '9') || next == ')' || after == ' ' || after == '\r' ||
        after == '\0' || (decoded && after == '\n')) {
      return true;
    }
  }
  return false;
}

std::string without_tabs(const std::string& match) {
  return MY_STRING::replace(match, "\t", "");
}

namespace {

// The next run of digits at or after *at, read as to_int reads it, with the tabs between
// runs passed over as if the text had none; false when no digit follows.
bool next_number(std::string_view text, size_t* at, long long* value) {
  size_t p = *at;
  while (p < text.size() && !is_digit(text[p])) ++p;
  if (p == text.size()) return false;
  constexpr long long kSaturated = static_cast<long long>(INT_MAX) + 1;
  long long n = 0;
  for (; p < text.size() && (is_digit(text[p]) || text[p] == '\t'); ++p) {
    if (text[p] != '\t') n = std::min(n * 10 + (text[p] - '0'), kSaturated);
  }
  *value = std::min(n, static_cast<long long>(INT_MAX));
  *at = p;
  return true;
}

}  // namespace

void rowcol(const std::string& match, long long* row, long long* col) {
  size_t at = 0;
  *row = 0;
  if (!next_number(match, &at, row) || !next_number(match, &at, col)) *col = *row;
}

void rowcol_font(const std::string& match, long long* row, long long* col, std::string* font) {
  static const char* const kLabel = "rowcol_font( char*, int*, int*, char* )";
  const std::string text = without_tabs(match);
  const size_t first = text.find('-');
  const size_t second = first == std::string::npos ? first : text.find('-', first + 1);
  if (second == std::string::npos) aborterr("AI_POINT_TEXT", kLabel, "placeholder without row");
  const std::string_view view(text);
  *row = to_int(view.substr(first + 1, second - first - 1));
  const size_t third = text.find('-', second + 1);
  const size_t column_end = third != std::string::npos ? third : text.find('_', second + 1);
  if (column_end == std::string::npos) aborterr("AI_POINT_TEXT", kLabel, "placeholder without _");
  *col = to_int(view.substr(second + 1, column_end - second - 1));
  font->clear();
  if (third == std::string::npos) return;
  const size_t close = text.find('_', third + 1);
  if (close == std::string::npos) aborterr("AI_POINT_TEXT", kLabel, "placeholder without _");
  font->assign(text, third + 1, close - third - 1);
}

void placeholder_cell(const std::string& match, bool with_font, long long* row, long long* col) {
  if (with_font) {
    std::string font;
    rowcol_font(match, row, col, &font);
  } else {
    rowcol(match, row, col);
  }
}

std::optional<std::string> find_name_placeholder(const char* id, const std::string& name) {
  AI_REGEX_PATTERN pattern;
  MY_REGEX regex;
  if (!regex.compile(id ? pattern.create_pattern(id, nullptr) : pattern.create_pattern(nullptr))) {
    fail("%sAI_PLACED_ART_REPLACE::regex compile error\n", regex.error_text().c_str());
  }
  regex.init_offset(name.c_str());
  std::string match;
  if (!regex.match_next(match)) return std::nullopt;
  return match;
}

void name_rowcol(const char* name, int* row, int* col) {
  size_t at = 0;
  const std::string_view first = MY_STRING::next_digits(name, &at);
  const std::string_view second = MY_STRING::next_digits(name, &at);
  *row = to_int(first);
  *col = second.empty() ? *row : to_int(second);
}
