#include "support/error.h"

#include <cstdarg>
#include <cstdio>
#include <vector>

void fail(const char* format, ...) {
  va_list args;
  va_start(args, format);
  va_list again;
  va_copy(again, args);
  int length = std::vsnprintf(nullptr, 0, format, args);
  va_end(args);
  std::vector<char> text(static_cast<size_t>(length < 0 ? 0 : length) + 1);
  std::vsnprintf(text.data(), text.size(), format, again);
  va_end(again);
  throw Error(std::string(text.data(), text.size() - 1));
}

void memallocerr(const char* class_label, const char* operation_label) {
  fail("%s:%s:memory allocation error\n", class_label, operation_label);
}

void aborterr(const char* class_label, const char* operation_label, const char* message) {
  fail("%s:%s:%s\n", class_label, operation_label, message);
}
