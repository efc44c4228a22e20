// Copies of the words most recently read from an object's lines, newest on top, so that a
// parser that meets an operator can look back at the operands written before it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

// One word on the stack.
struct STACK_OBJ {
  static constexpr size_t kMaxLength = 1023;

  // Copies the word; a word of more than kMaxLength characters fails the run with
  // "STACK_OBJ::str size error\n".
  explicit STACK_OBJ(std::string_view token, bool check_length = true);
  STACK_OBJ() = default;
  void assign(std::string_view token, bool check_length);

  std::string str;
};

class STACK {
 public:
  STACK() = default;
  // A stack that defers its word-length error: it keeps long words whole and remembers
  // them, so that a parser can first decide whether the object matters at all.
  explicit STACK(bool defer) : defer_size_errors(defer) {}

  // Pushes a copy of the word and returns the stored copy.
  const char* push(std::string_view token);
  // push, then drop the oldest words while more than bound are held.
  void push_bounded(std::string_view token, int bound);
  int count() const { return static_cast<int>(held); }
  // peek(0) is the newest word, peek(-1) the one before it; nullptr past the oldest word
  // and for any positive i.
  const char* peek(int i) const;
  // The n-th operand before the operator on top, peek(-n), or the empty word when the
  // operator was written with fewer operands.
  const char* operand(int n) const;
  // Takes the oldest word out into the overflow slot, which free_overflow must empty before
  // the next shift ("free stack overflow!\n" otherwise). Returns nullptr on an empty stack.
  const STACK_OBJ* shift();
  void free_overflow() { overflow_held = false; }
  void free_all();
  // free_all, and forgets any long word seen: the stack as new, its storage kept.
  void clear() {
    free_all();
    overlong = false;
  }
  // Whether a word longer than STACK_OBJ::kMaxLength was pushed (deferring stacks only).
  bool overlong_seen() const { return overlong; }

 private:
  // from_oldest is at most the ring's size, so one subtraction wraps it (no division).
  size_t wrap(size_t index) const { return index < ring.size() ? index : index - ring.size(); }
  STACK_OBJ& slot(size_t from_oldest) { return ring[wrap(oldest + from_oldest)]; }
  const STACK_OBJ& slot(size_t from_oldest) const { return ring[wrap(oldest + from_oldest)]; }
  void grow();

  bool defer_size_errors = false;
  bool overlong = false;
  // The words sit in a ring whose slots keep their storage, so that a parser reading
  // millions of words does not allocate for each one.
  std::vector<STACK_OBJ> ring;
  size_t oldest = 0;
  size_t held = 0;
  STACK_OBJ overflow;
  bool overflow_held = false;
};
