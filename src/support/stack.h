// The words most recently read from an object's lines, newest on top, so that a parser that
// meets an operator can look back at the operands written before it. The stack holds views
// of the words, not copies: the lines they stand in must outlive its use of them.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

// One word on the stack.
struct STACK_OBJ {
  static constexpr size_t kMaxLength = 1023;

  std::string_view str;
};

class STACK {
 public:
  STACK() = default;
  // A stack that defers its word-length error: it keeps long words and remembers them, so
  // that a parser can first decide whether the object matters at all.
  explicit STACK(bool defer) : defer_size_errors(defer) {}

  // Pushes the word. A word of more than STACK_OBJ::kMaxLength characters fails the run with
  // "STACK_OBJ::str size error\n", unless the stack defers that error.
  void push(std::string_view token) {
    if (token.size() > STACK_OBJ::kMaxLength) long_word();
    if (oldest + held == words.size()) make_room();
    words[oldest + held].str = token;
    ++held;
  }
  // push, then drop the oldest words while more than bound are held.
  void push_bounded(std::string_view token, int bound) {
    push(token);
    if (count() > bound) drop_beyond(bound);
  }
  int count() const { return static_cast<int>(held); }
  // peek(0) is the newest word, peek(-1) the one before it; nothing past the oldest word and
  // for any positive i.
  std::optional<std::string_view> peek(int i) const;
  // The n-th operand before the operator on top, peek(-n), or the empty word when the
  // operator was written with fewer operands.
  std::string_view operand(int n) const {
    return n >= 0 && static_cast<size_t>(n) < held ? slot(held - 1 - static_cast<size_t>(n)).str
                                                   : std::string_view();
  }
  // Takes the oldest word out into the overflow slot, which free_overflow must empty before
  // the next shift ("free stack overflow!\n" otherwise). Returns nullptr on an empty stack.
  const STACK_OBJ* shift();
  void free_overflow() { overflow_held = false; }
  void free_all();
  // free_all, and forgets any long word seen: the stack as new.
  void clear() {
    free_all();
    overlong = false;
  }
  // Whether a word longer than STACK_OBJ::kMaxLength was pushed (deferring stacks only).
  bool overlong_seen() const { return overlong; }

 private:
  const STACK_OBJ& slot(size_t from_oldest) const { return words[oldest + from_oldest]; }
  void make_room();
  void long_word();
  void drop_beyond(int bound);

  bool defer_size_errors = false;
  bool overlong = false;
  // The words held are words[oldest] to words[oldest + held - 1]: dropping the oldest moves
  // nothing, and they go back to the front only when the end is reached.
  std::vector<STACK_OBJ> words;
  size_t oldest = 0;
  size_t held = 0;
  STACK_OBJ overflow;
  bool overflow_held = false;
};
