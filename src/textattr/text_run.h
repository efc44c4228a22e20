// One text run of a point text: the style operators read since the previous string, and the
// string of the Tx or TX operator that ends the run. A replaced point text is written from
// its runs alone, so a run prints only the operators it read, in a fixed order.
#pragma once

#include <cstdint>
#include <memory_resource>
#include <string>
#include <string_view>
#include <vector>

#include "textattr/text_operator.h"

class Output;
class STACK;

class AI_TxTX {
 public:
  // memory: where the operands go. A copy keeps its own on the heap.
  explicit AI_TxTX(std::pmr::memory_resource* memory = std::pmr::get_default_resource())
      : operands(memory) {}
  // A copy whose operands go to memory and take no more room than they need.
  AI_TxTX(const AI_TxTX& run, std::pmr::memory_resource* memory) : AI_TxTX(memory) { *this = run; }

  // Files one operator, the newest word of stack. A repeated operator replaces its record;
  // operators that belong to no run are ignored.
  void setup(TEXT_OP op, const STACK& stack);
  // k g K G, then Tf Tr TV Ta Tt Tz Tl Tk TK Ts Xu Tq, then the string, each only if read.
  void print(Output& out) const;
  // The run's string; nullptr when it has none.
  std::string* string() { return has_string ? &str : nullptr; }
  const std::string* string() const { return has_string ? &str : nullptr; }
  void set_string(std::string text) {
    str = std::move(text);
    has_string = true;
  }
  void drop_string() {
    str.clear();
    has_string = false;
  }

  // Whether the run read the style operator op (k to Tq).
  bool has(TEXT_OP op) const { return (present & bit(op)) != 0; }
  // Forgets the style operator op, as if the run had not read it.
  void drop(TEXT_OP op);

  // The font of the run's Tf, without the two characters ("/_") written before it; only
  // meaningful when the run read a Tf.
  std::string font_name;
  // Set when a placeholder gave the run its font.
  bool font_replaced = false;
  bool str_is_TX = false;
  // Set once the run's number has been written in numeral-font codes: the escapes of those
  // codes hold digits that are no number of the text, so the run is never encoded again.
  bool number_encoded = false;

 private:
  static uint32_t bit(TEXT_OP op) {
    return uint32_t{1} << (static_cast<int>(op) - static_cast<int>(TEXT_OP::k));
  }
  // Where op's operands are, or would go, in operands.
  size_t first_operand(TEXT_OP op) const;

  bool has_string = false;
  // Only the operators read take room: one bit each says which, and their operands follow
  // one another in print order (integers too, which a double holds exactly).
  uint32_t present = 0;
  // The string of the Tx or TX operator that closed the run (a run has at most one), without
  // its enclosing parentheses, escapes as written in the template.
  std::string str;
  std::pmr::vector<double> operands;
};
