#include "support/regex.h"

#include <map>
#include <memory>
#include <string_view>

namespace {

// A compiled expression, released when the process ends.
struct CompiledRegex {
  regex_t regex;
  ~CompiledRegex() { regfree(&regex); }
};

// Looked up by the pattern's characters, without making a string of them first.
using PatternMap = std::map<std::string, std::unique_ptr<CompiledRegex>, std::less<>>;

PatternMap& compiled_patterns() {
  static PatternMap patterns;
  return patterns;
}

}  // namespace

int MY_REGEX::compile(const char* pattern) {
  auto& patterns = compiled_patterns();
  auto found = patterns.find(std::string_view(pattern));
  if (found == patterns.end()) {
    auto compiled = std::make_unique<CompiledRegex>();
    int status = regcomp(&compiled->regex, pattern, REG_EXTENDED);
    if (status != 0) {
      char message[128];
      regerror(status, &compiled->regex, message, sizeof message);
      errbuf = std::string("regcomp() error:") + message + "\n";
      return 0;
    }
    found = patterns.emplace(pattern, std::move(compiled)).first;
  }
  regex = &found->second->regex;
  return 1;
}

const char* MY_REGEX::init_offset(const char* text) {
  subject = text;
  offset = 0;
  return text;
}

// The subject's bounds are passed with REG_STARTEND: the library then never measures the
// rest of the subject again, which would make a walk over many matches quadratic.
bool MY_REGEX::search(size_t from, size_t* start, size_t* end) const {
  if (!regex || from > subject.size()) return false;
  regmatch_t match;
  match.rm_so = static_cast<regoff_t>(from);
  match.rm_eo = static_cast<regoff_t>(subject.size());
  if (regexec(regex, subject.data(), 1, &match, REG_STARTEND) != 0) return false;
  *start = static_cast<size_t>(match.rm_so);
  *end = static_cast<size_t>(match.rm_eo);
  return true;
}

// An empty match still moves the walk on by one character, so no pattern loops forever.
int MY_REGEX::match_count() const {
  int count = 0;
  size_t start = 0;
  size_t end = 0;
  for (size_t from = 0; search(from, &start, &end); from = end > start ? end : start + 1) {
    ++count;
    if (start == subject.size()) break;
  }
  return count;
}

int MY_REGEX::match_next(std::string& out) {
  size_t start = 0;
  size_t end = 0;
  if (!search(offset, &start, &end)) return 0;
  out.assign(subject, start, end - start);
  offset = end > start ? end : start + 1;
  return 1;
}

int MY_REGEX::match_yes() const {
  if (!regex) return 0;
  regmatch_t bounds;
  bounds.rm_so = 0;
  bounds.rm_eo = static_cast<regoff_t>(subject.size());
  return regexec(regex, subject.data(), 0, &bounds, REG_STARTEND) == 0;
}
