#include "textattr/text_run.h"

#include <algorithm>

#include "support/numbers.h"
#include "support/output.h"
#include "support/stack.h"

namespace {

// The style operators of a run, in print order (the order of TEXT_OP from k to Tq), with
// the number of operands each reads and prints: reals as "%f", integers as "%d". Tf also
// reads a font name before its numbers, and Xu writes its first integer after "%_".
struct STYLE_OPERATOR {
  std::string_view name;
  int operands;
  bool reals;
};
constexpr STYLE_OPERATOR kStyleOperators[] = {
    {"k", 4, true},   {"g", 1, true},   {"K", 4, true},   {"G", 1, true},
    {"Tf", 3, true},  {"Tr", 1, false}, {"TV", 1, false}, {"Ta", 1, false},
    {"Tt", 1, false}, {"Tz", 2, true},  {"Tl", 2, true},  {"Tk", 2, false},
    {"TK", 2, false}, {"Ts", 1, true},  {"Xu", 4, false}, {"Tq", 1, false},
};
constexpr int kStyleOperatorCount = sizeof kStyleOperators / sizeof kStyleOperators[0];

int style_index(TEXT_OP op) {
  return static_cast<int>(op) - static_cast<int>(TEXT_OP::k);
}

bool is_style_operator(TEXT_OP op) {
  return style_index(op) >= 0 && style_index(op) < kStyleOperatorCount;
}

// Operand i of a style operator of n operands: the words before the operator, oldest first.
double read_operand(const STACK& stack, TEXT_OP op, int n, int i) {
  const std::string_view word = stack.operand(n - i);
  if (op == TEXT_OP::Xu && i == 0) return word.size() < 2 ? 0 : to_int(word.substr(2));
  return kStyleOperators[style_index(op)].reals ? to_double(word) : to_int(word);
}

// The string operand without its parentheses. Substitution joins the runs' strings with
// tabs, so a tab inside one string is kept as its escape to leave the joints unambiguous.
std::string run_string(std::string_view operand) {
  if (operand.size() < 2) return std::string();
  const std::string_view inside = operand.substr(1, operand.size() - 2);
  if (inside.find('\t') == std::string_view::npos) return std::string(inside);
  std::string text;
  for (char c : inside) {
    if (c == '\t') {
      text += "\\t";
    } else {
      text += c;
    }
  }
  return text;
}

}  // namespace

size_t AI_TxTX::first_operand(TEXT_OP op) const {
  size_t at = 0;
  for (uint32_t before = present & (bit(op) - 1); before != 0; before &= before - 1) {
    at += static_cast<size_t>(kStyleOperators[__builtin_ctz(before)].operands);
  }
  return at;
}

void AI_TxTX::setup(TEXT_OP op, const STACK& stack) {
  if (op == TEXT_OP::Tx || op == TEXT_OP::TX) {
    set_string(run_string(stack.operand(1)));
    str_is_TX = op == TEXT_OP::TX;
    return;
  }
  if (!is_style_operator(op)) return;
  const int n = kStyleOperators[style_index(op)].operands;
  double values[4];
  for (int i = 0; i < n; ++i) values[i] = read_operand(stack, op, n, i);
  // Most runs read a colour, a font and a few numbers more: one allocation holds them.
  if (operands.empty()) operands.reserve(8);
  const auto at = operands.begin() + static_cast<std::ptrdiff_t>(first_operand(op));
  if (has(op)) {
    std::copy(values, values + n, at);
  } else {
    operands.insert(at, values, values + n);
    present |= bit(op);
  }
  if (op == TEXT_OP::Tf) {
    const std::string_view name = stack.operand(4);
    font_name = name.size() < 2 ? std::string() : std::string(name.substr(2));
  }
}

void AI_TxTX::drop(TEXT_OP op) {
  if (!has(op)) return;
  const auto at = operands.begin() + static_cast<std::ptrdiff_t>(first_operand(op));
  operands.erase(at, at + kStyleOperators[style_index(op)].operands);
  present &= ~bit(op);
}

void AI_TxTX::print(Output& out) const {
  const double* values = operands.data();
  for (uint32_t left = present; left != 0; left &= left - 1) {
    const int i = __builtin_ctz(left);
    const STYLE_OPERATOR& style = kStyleOperators[i];
    const auto count = static_cast<size_t>(style.operands);
    if (i == style_index(TEXT_OP::Tf)) {
      out.write("/_");
      out.write(font_name);
      out.write(" ");
    } else if (i == style_index(TEXT_OP::Xu)) {
      out.write("%_");
    }
    if (style.reals) {
      out.reals_line(values, count, style.name);
    } else {
      int integers[4];
      for (size_t j = 0; j < count; ++j) integers[j] = static_cast<int>(values[j]);
      out.integers_line(integers, count, style.name);
    }
    values += count;
  }
  if (!has_string) return;
  out.write("(");
  out.write(str);
  out.line(str_is_TX ? ") TX" : ") Tx");
}
