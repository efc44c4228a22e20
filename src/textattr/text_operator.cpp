#include "textattr/text_operator.h"

namespace {

TEXT_OP one_letter(char c) {
  switch (c) {
    case 'k':
      return TEXT_OP::k;
    case 'g':
      return TEXT_OP::g;
    case 'K':
      return TEXT_OP::K;
    case 'G':
      return TEXT_OP::G;
    default:
      return TEXT_OP::none;
  }
}

// The operators whose first letter is T.
TEXT_OP after_T(char c) {
  switch (c) {
    case 'p':
      return TEXT_OP::Tp;
    case 'P':
      return TEXT_OP::TP;
    case 'v':
      return TEXT_OP::Tv;
    case 'f':
      return TEXT_OP::Tf;
    case 'r':
      return TEXT_OP::Tr;
    case 'V':
      return TEXT_OP::TV;
    case 'a':
      return TEXT_OP::Ta;
    case 't':
      return TEXT_OP::Tt;
    case 'z':
      return TEXT_OP::Tz;
    case 'l':
      return TEXT_OP::Tl;
    case 'k':
      return TEXT_OP::Tk;
    case 'K':
      return TEXT_OP::TK;
    case 's':
      return TEXT_OP::Ts;
    case 'q':
      return TEXT_OP::Tq;
    case 'x':
      return TEXT_OP::Tx;
    case 'X':
      return TEXT_OP::TX;
    default:
      return TEXT_OP::none;
  }
}

}  // namespace

TEXT_OP short_word_operator(std::string_view word) {
  if (word.size() == 1) return one_letter(word[0]);
  if (word.size() != 2) return TEXT_OP::none;
  switch (word[0]) {
    case 'T':
      return after_T(word[1]);
    case 'A':
      return word[1] == 'p' ? TEXT_OP::Ap : word[1] == 'r' ? TEXT_OP::Ar : TEXT_OP::none;
    case 'X':
      return word[1] == 'u' ? TEXT_OP::Xu : TEXT_OP::none;
    default:
      return TEXT_OP::none;
  }
}
