#include "textattr/text_run.h"

#include "support/numbers.h"
#include "support/output.h"
#include "support/stack.h"

namespace {

double real(const STACK& stack, int n) {
  return to_double(stack.operand(n));
}

int integer(const STACK& stack, int n) {
  return to_int(stack.operand(n));
}

// Xu writes its first operand after the prefix "%_".
int prefixed_integer(const STACK& stack, int n) {
  const std::string_view word = stack.operand(n);
  return word.size() < 2 ? 0 : to_int(word.substr(2));
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

void AI_TxTX::setup(TEXT_OP op, const STACK& stack) {
  switch (op) {
    case TEXT_OP::k:
      record<OP_k>().setup(real(stack, 4), real(stack, 3), real(stack, 2), real(stack, 1));
      break;
    case TEXT_OP::g:
      record<OP_g>().setup(real(stack, 1));
      break;
    case TEXT_OP::K:
      record<OP_K>().setup(real(stack, 4), real(stack, 3), real(stack, 2), real(stack, 1));
      break;
    case TEXT_OP::G:
      record<OP_G>().setup(real(stack, 1));
      break;
    case TEXT_OP::Tf:
      record<OP_Tf>().setup(stack.operand(4), real(stack, 3), real(stack, 2), real(stack, 1));
      break;
    case TEXT_OP::Tr:
      record<OP_Tr>().setup(integer(stack, 1));
      break;
    case TEXT_OP::TV:
      record<OP_TV>().setup(integer(stack, 1));
      break;
    case TEXT_OP::Ta:
      record<OP_Ta>().setup(integer(stack, 1));
      break;
    case TEXT_OP::Tt:
      record<OP_Tt>().setup(integer(stack, 1));
      break;
    case TEXT_OP::Tz:
      record<OP_Tz>().setup(real(stack, 2), real(stack, 1));
      break;
    case TEXT_OP::Tl:
      record<OP_Tl>().setup(real(stack, 2), real(stack, 1));
      break;
    case TEXT_OP::Tk:
      record<OP_Tk>().setup(integer(stack, 2), integer(stack, 1));
      break;
    case TEXT_OP::TK:
      record<OP_TK>().setup(integer(stack, 2), integer(stack, 1));
      break;
    case TEXT_OP::Ts:
      record<OP_Ts>().setup(real(stack, 1));
      break;
    case TEXT_OP::Xu:
      record<OP_Xu>().setup(prefixed_integer(stack, 4), integer(stack, 3), integer(stack, 2),
                            integer(stack, 1));
      break;
    case TEXT_OP::Tq:
      record<OP_Tq>().setup(integer(stack, 1));
      break;
    case TEXT_OP::Tx:
    case TEXT_OP::TX:
      str = run_string(stack.operand(1));
      str_is_TX = op == TEXT_OP::TX;
      break;
    default:
      break;
  }
}

void AI_TxTX::print(Output& out) const {
  for (const RECORD& record : records) {
    std::visit([&out](const auto& op) { op.print(out); }, record);
  }
  if (!str) return;
  out.write("(");
  out.write(*str);
  out.line(str_is_TX ? ") TX" : ") Tx");
}
