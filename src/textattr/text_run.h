// One text run of a point text: the style operators read since the previous string, and the
// string of the Tx or TX operator that ends the run. A replaced point text is written from
// its runs alone, so a run prints only the operators it read, in a fixed order.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "textattr/paint_style.h"
#include "textattr/text_style.h"

class Output;
class STACK;

class AI_TxTX {
 public:
  // Files one operator; op is the operator word, which is also stack.peek(0). A repeated
  // operator replaces its record; words that are no run operator are ignored.
  void setup(const char* op, const STACK& stack);
  // k g K G, then Tf Tr TV Ta Tt Tz Tl Tk TK Ts Xu Tq, then the Tx string, then the TX
  // string, each only if read.
  void print(Output& out) const;
  // The run's string; nullptr when it has none.
  std::string* string() { return str ? &*str : nullptr; }
  const std::string* string() const { return str ? &*str : nullptr; }

  std::optional<OP_k> k;
  std::optional<OP_g> g;
  std::optional<OP_K> K;
  std::optional<OP_G> G;
  std::optional<OP_Tf> Tf;
  int font_replaced = 0;
  std::optional<OP_Tr> Tr;
  std::optional<OP_TV> TV;
  std::optional<OP_Ta> Ta;
  std::optional<OP_Tt> Tt;
  std::optional<OP_Tz> Tz;
  std::optional<OP_Tl> Tl;
  std::optional<OP_Tk> Tk;
  std::optional<OP_TK> TK;
  std::optional<OP_Ts> Ts;
  std::optional<OP_Xu> Xu;
  std::optional<OP_Tq> Tq;
  // The string of the Tx or TX operator that closed the run (a run has at most one), without
  // its enclosing parentheses, escapes as written in the template.
  std::optional<std::string> str;
  bool str_is_TX = false;
  // Set once the run's number has been written in numeral-font codes: the escapes of those
  // codes hold digits that are no number of the text, so the run is never encoded again.
  bool number_encoded = false;

 private:
  void paint_style_setup(std::string_view op, const STACK& stack);
  void text_style_setup(std::string_view op, const STACK& stack);
  void paint_style_print(Output& out) const;
  void text_style_print(Output& out) const;
};
