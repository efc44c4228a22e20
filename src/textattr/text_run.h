// One text run of a point text: the style operators read since the previous string, and the
// string of the Tx or TX operator that ends the run. A replaced point text is written from
// its runs alone, so a run prints only the operators it read, in a fixed order.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

#include "textattr/paint_style.h"
#include "textattr/text_operator.h"
#include "textattr/text_style.h"

class Output;
class STACK;

class AI_TxTX {
 public:
  // The record of one style operator, in the order a run prints them.
  using RECORD = std::variant<OP_k, OP_g, OP_K, OP_G, OP_Tf, OP_Tr, OP_TV, OP_Ta, OP_Tt, OP_Tz,
                              OP_Tl, OP_Tk, OP_TK, OP_Ts, OP_Xu, OP_Tq>;

  // Files one operator, the newest word of stack. A repeated operator replaces its record;
  // operators that belong to no run are ignored.
  void setup(TEXT_OP op, const STACK& stack);
  // k g K G, then Tf Tr TV Ta Tt Tz Tl Tk TK Ts Xu Tq, then the string, each only if read.
  void print(Output& out) const;
  // The run's string; nullptr when it has none.
  std::string* string() { return str ? &*str : nullptr; }
  const std::string* string() const { return str ? &*str : nullptr; }

  // The record of operator OP (OP_Tf, OP_k, ...); nullptr when the run read none.
  template <class OP>
  OP* find() {
    auto at = place<OP>();
    return at != records.end() && at->index() == kIndex<OP> ? &std::get<OP>(*at) : nullptr;
  }
  template <class OP>
  const OP* find() const {
    return const_cast<AI_TxTX*>(this)->find<OP>();
  }
  template <class OP>
  void drop() {
    auto at = place<OP>();
    if (at != records.end() && at->index() == kIndex<OP>) records.erase(at);
  }

  int font_replaced = 0;
  // The string of the Tx or TX operator that closed the run (a run has at most one), without
  // its enclosing parentheses, escapes as written in the template.
  std::optional<std::string> str;
  bool str_is_TX = false;
  // Set once the run's number has been written in numeral-font codes: the escapes of those
  // codes hold digits that are no number of the text, so the run is never encoded again.
  bool number_encoded = false;

 private:
  template <class OP, size_t I = 0>
  static constexpr size_t index_of() {
    if constexpr (std::is_same_v<OP, std::variant_alternative_t<I, RECORD>>) {
      return I;
    } else {
      return index_of<OP, I + 1>();
    }
  }
  template <class OP>
  static constexpr size_t kIndex = index_of<OP>();

  // Where the record of OP is, or would go.
  template <class OP>
  std::vector<RECORD>::iterator place() {
    auto at = records.begin();
    while (at != records.end() && at->index() < kIndex<OP>) ++at;
    return at;
  }
  // The record of OP, made in its place when the run has none yet.
  template <class OP>
  OP& record() {
    // Most runs read up to four style operators: one allocation holds them.
    if (records.empty()) records.reserve(4);
    auto at = place<OP>();
    if (at == records.end() || at->index() != kIndex<OP>) {
      at = records.emplace(at, std::in_place_type<OP>);
    }
    return std::get<OP>(*at);
  }

  // Only the operators read take room: most runs read two or three of the sixteen.
  std::vector<RECORD> records;
};
