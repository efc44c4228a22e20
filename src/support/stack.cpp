#include "support/stack.h"

#include <algorithm>

#include "driver/diagnostics.h"

// Puts the words back in order from the first slot and adds an empty slot at the end.
void STACK::grow() {
  std::rotate(ring.begin(), ring.begin() + static_cast<std::ptrdiff_t>(oldest), ring.end());
  oldest = 0;
  ring.emplace_back();
}

void STACK::push(std::string_view token) {
  if (token.size() > STACK_OBJ::kMaxLength) {
    if (!defer_size_errors) fail("STACK_OBJ::str size error\n");
    overlong = true;
  }
  if (held == ring.size()) grow();
  slot(held).str = token;
  ++held;
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

std::optional<std::string_view> STACK::peek(int i) const {
  if (i > 0 || -static_cast<long long>(i) >= static_cast<long long>(held)) return std::nullopt;
  return slot(held - 1 - static_cast<size_t>(-i)).str;
}

const STACK_OBJ* STACK::shift() {
  if (overflow_held) fail("free stack overflow!\n");
  if (held == 0) return nullptr;
  overflow = slot(0);
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
