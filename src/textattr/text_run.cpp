#include "textattr/text_run.h"

#include <cstring>

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
  const char* word = stack.operand(n);
  return std::strlen(word) < 2 ? 0 : to_int(word + 2);
}

// The string operand without its parentheses. Substitution joins the runs' strings with
// tabs, so a tab inside one string is kept as its escape to leave the joints unambiguous.
std::string run_string(std::string_view operand) {
  if (operand.size() < 2) return std::string();
  std::string text;
  for (char c : operand.substr(1, operand.size() - 2)) {
    if (c == '\t') {
      text += "\\t";
    } else {
      text += c;
    }
  }
  return text;
}

template <class Record>
void print_if(const std::optional<Record>& record, Output& out) {
  if (record) record->print(out);
}

}  // namespace

void AI_TxTX::setup(const char* op, const STACK& stack) {
  std::string_view word = op;
  paint_style_setup(word, stack);
  text_style_setup(word, stack);
  if (word == "Tx" || word == "TX") {
    str = run_string(stack.operand(1));
    str_is_TX = word == "TX";
  }
}

void AI_TxTX::paint_style_setup(std::string_view op, const STACK& stack) {
  if (op == "k") {
    k.emplace().setup(real(stack, 4), real(stack, 3), real(stack, 2), real(stack, 1));
  } else if (op == "g") {
    g.emplace().setup(real(stack, 1));
  } else if (op == "K") {
    K.emplace().setup(real(stack, 4), real(stack, 3), real(stack, 2), real(stack, 1));
  } else if (op == "G") {
    G.emplace().setup(real(stack, 1));
  }
}

void AI_TxTX::text_style_setup(std::string_view op, const STACK& stack) {
  if (op == "Tf") {
    Tf.emplace().setup(stack.operand(4), real(stack, 3), real(stack, 2), real(stack, 1));
  } else if (op == "Tr") {
    Tr.emplace().setup(integer(stack, 1));
  } else if (op == "TV") {
    TV.emplace().setup(integer(stack, 1));
  } else if (op == "Ta") {
    Ta.emplace().setup(integer(stack, 1));
  } else if (op == "Tt") {
    Tt.emplace().setup(integer(stack, 1));
  } else if (op == "Tz") {
    Tz.emplace().setup(real(stack, 2), real(stack, 1));
  } else if (op == "Tl") {
    Tl.emplace().setup(real(stack, 2), real(stack, 1));
  } else if (op == "Tk") {
    Tk.emplace().setup(integer(stack, 2), integer(stack, 1));
  } else if (op == "TK") {
    TK.emplace().setup(integer(stack, 2), integer(stack, 1));
  } else if (op == "Ts") {
    Ts.emplace().setup(real(stack, 1));
  } else if (op == "Xu") {
    Xu.emplace().setup(prefixed_integer(stack, 4), integer(stack, 3), integer(stack, 2),
                       integer(stack, 1));
  } else if (op == "Tq") {
    Tq.emplace().setup(integer(stack, 1));
  }
}

void AI_TxTX::print(Output& out) const {
  paint_style_print(out);
  text_style_print(out);
  if (str) out.printf("(%s) %s%s", str->c_str(), str_is_TX ? "TX" : "Tx", "\r");
}

void AI_TxTX::paint_style_print(Output& out) const {
  print_if(k, out);
  print_if(g, out);
  print_if(K, out);
  print_if(G, out);
}

void AI_TxTX::text_style_print(Output& out) const {
  print_if(Tf, out);
  print_if(Tr, out);
  print_if(TV, out);
  print_if(Ta, out);
  print_if(Tt, out);
  print_if(Tz, out);
  print_if(Tl, out);
  print_if(Tk, out);
  print_if(TK, out);
  print_if(Ts, out);
  print_if(Xu, out);
  print_if(Tq, out);
}
