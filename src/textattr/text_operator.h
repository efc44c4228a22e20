// The operators of a point text that its model files, told apart by their words.
#pragma once

#include <string_view>

enum class TEXT_OP : unsigned char {
  none,
  // The text's placement and attributes.
  Tp,
  TP,
  Tv,
  Ap,
  Ar,
  // A run's style operators and the string operators that close it.
  k,
  g,
  K,
  G,
  Tf,
  Tr,
  TV,
  Ta,
  Tt,
  Tz,
  Tl,
  Tk,
  TK,
  Ts,
  Xu,
  Tq,
  Tx,
  TX,
};

// The operator that a word of one or two characters, the first a letter, names.
TEXT_OP short_word_operator(std::string_view word);

// The operator that word names, or TEXT_OP::none. Every word of a point text passes here, so
// the test looks at the characters rather than at a list, and the numbers and strings that
// most words are go no further than this line.
inline TEXT_OP text_operator(std::string_view word) {
  if (word.empty() || word.size() > 2 || word[0] < 'A') return TEXT_OP::none;
  return short_word_operator(word);
}
