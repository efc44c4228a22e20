#include "support/stack.h"

#include <algorithm>

#include "support/error.h"

// Moves the words to the front when at least as many slots are free there as words are
// held, so that a bounded stack moves each word about once; grows the vector otherwise.
void STACK::make_room() {
  if (oldest > 0 && oldest >= held) {
    std::copy(words.begin() + static_cast<std::ptrdiff_t>(oldest), words.end(), words.begin());
    oldest = 0;
    return;
  }
  words.resize(std::max<size_t>(2 * words.size(), 16));
}

void STACK::long_word() {
  if (!defer_size_errors) fail("STACK_OBJ::str size error\n");
  overlong = true;
}

// The oldest words go as shift and free_overflow would take them, without the round trip
// through the overflow slot.
void STACK::drop_beyond(int bound) {
  if (overflow_held) fail("free stack overflow!\n");
  const size_t dropped = held - static_cast<size_t>(std::max(bound, 0));
  oldest += dropped;
  held -= dropped;
}

std::optional<std::string_view> STACK::peek(int i) const {
  if (i > 0 || -static_cast<long long>(i) >= static_cast<long long>(held)) return std::nullopt;
  return slot(held - 1 - static_cast<size_t>(-i)).str;
}

const STACK_OBJ* STACK::shift() {
  if (overflow_held) fail("free stack overflow!\n");
  if (held == 0) return nullptr;
  overflow = slot(0);
  ++oldest;
  --held;
  overflow_held = true;
  return &overflow;
}

void STACK::free_all() {
  oldest = 0;
  held = 0;
  free_overflow();
}
