#include "support/patterns.h"

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
