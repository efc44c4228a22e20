#include "support/stack.h"

#include "driver/diagnostics.h"

STACK_OBJ::STACK_OBJ(std::string_view token, bool check_length) {
  if (check_length && token.size() > kMaxLength) fail("STACK_OBJ::str size error\n");
  str.assign(token);
}

const char* STACK::push(std::string_view token) {
  if (token.size() > STACK_OBJ::kMaxLength && defer_size_errors) overlong = true;
  entries.emplace_back(token, !defer_size_errors);
  return entries.back().str.c_str();
}

void STACK::push_bounded(std::string_view token, int bound) {
  push(token);
  while (count() > bound) {
    shift();
    free_overflow();
  }
}

const char* STACK::peek(int i) const {
  if (i > 0 || -static_cast<long long>(i) >= static_cast<long long>(entries.size())) {
    return nullptr;
  }
  return entries[entries.size() - 1 - static_cast<size_t>(-i)].str.c_str();
}

const char* STACK::operand(int n) const {
  const char* word = peek(-n);
  return word ? word : "";
}

const STACK_OBJ* STACK::shift() {
  if (overflow) fail("free stack overflow!\n");
  if (entries.empty()) return nullptr;
  overflow.emplace(std::move(entries.front()));
  entries.pop_front();
  return &*overflow;
}

void STACK::free_all() {
  entries.clear();
  free_overflow();
}
