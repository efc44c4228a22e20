#include "support/stack.h"

#include <algorithm>

#include "driver/diagnostics.h"

STACK_OBJ::STACK_OBJ(std::string_view token, bool check_length) {
  assign(token, check_length);
}

void STACK_OBJ::assign(std::string_view token, bool check_length) {
  if (check_length && token.size() > kMaxLength) fail("STACK_OBJ::str size error\n");
  // clear and append reuse the storage like assign, without assign's care for overlap.
  str.clear();
  str.append(token.data(), token.size());
}

// Puts the words back in order from the first slot and adds an empty slot at the end.
void STACK::grow() {
  std::rotate(ring.begin(), ring.begin() + static_cast<std::ptrdiff_t>(oldest), ring.end());
  oldest = 0;
  ring.emplace_back();
}

const char* STACK::push(std::string_view token) {
  if (token.size() > STACK_OBJ::kMaxLength && defer_size_errors) overlong = true;
  if (held == ring.size()) grow();
  STACK_OBJ& entry = slot(held);
  entry.assign(token, !defer_size_errors);
  ++held;
  return entry.str.c_str();
}

void STACK::push_bounded(std::string_view token, int bound) {
  if (bound >= 0 && ring.size() <= static_cast<size_t>(bound)) {
    ring.reserve(static_cast<size_t>(bound) + 1);
  }
  push(token);
  while (count() > bound) {
    shift();
    free_overflow();
  }
}

const char* STACK::peek(int i) const {
  if (i > 0 || -static_cast<long long>(i) >= static_cast<long long>(held)) return nullptr;
  return slot(held - 1 - static_cast<size_t>(-i)).str.c_str();
}

const char* STACK::operand(int n) const {
  const char* word = peek(-n);
  return word ? word : "";
}

const STACK_OBJ* STACK::shift() {
  if (overflow_held) fail("free stack overflow!\n");
  if (held == 0) return nullptr;
  // A swap hands the word over and leaves the slot its old storage to reuse.
  overflow.str.swap(slot(0).str);
  oldest = wrap(oldest + 1);
  --held;
  overflow_held = true;
  return &overflow;
}

void STACK::free_all() {
  oldest = 0;
  held = 0;
  free_overflow();
}
