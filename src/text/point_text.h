// The parsed model of a replaceable point text: its placement and attributes and its text
// runs. Substitution joins the runs' strings with tabs, replaces every placeholder by the
// table cell it names, and hands the pieces back to the runs, so each run keeps its style.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "support/analysed_state.h"
#include "textattr/point_attributes.h"
#include "textattr/text_run.h"

class Output;
class STACK;
class TAB_TEXT;

// What placeholder replacement may produce in one run, all point texts together: 16 MiB
// plus 16 times the input. A run starts the pool with its template's size and adds each
// table's size as it reads the table.
void reset_expansion_pool(size_t input_bytes);
void add_to_expansion_pool(size_t input_bytes);

class AI_POINT_TEXT {
 public:
  // Whether word is one of the operators that the model files.
  static bool is_operator(const char* word);

  // Files one operator; it is the newest word of stack, its operands the words below.
  void setup(const char* op, const STACK& stack);
  void print(Output& out) const;
  // The runs' strings joined with sep (simply concatenated when sep is null); nothing when
  // no run has a string.
  std::optional<std::string> TxTXstring(const char* sep) const;

  // Replaces the placeholders of identifier id (every identifier when id is null).
  void setup_tabtxt(const char* id, const TAB_TEXT& tab);
  void setup_tabtxt(const TAB_TEXT& tab) { setup_tabtxt(nullptr, tab); }
  // Reports the placeholders that no table argument has reached.
  void report_unreplaced() const;
  // Returns to the runs as analysed, for the next document of a batch ("-each=").
  void restore_analysed();

  // For a text read by "-keep": the runs' strings hold decoded bytes (as run_text writes
  // them), so cells and numeral codes go into them decoded too.
  void read_decoded() { decoded = true; }
  std::vector<AI_TxTX>& runs() { return TxTX; }
  const std::vector<AI_TxTX>& runs() const { return TxTX; }

 private:
  bool may_hold_placeholder(const char* id) const;
  // Replaces in text; whether any placeholder was replaced or removed.
  bool setup_tabtxt_replace(std::string& text, const char* pattern, const TAB_TEXT& tab);
  void setup_tabtxt_split(const std::string& text);
  void font_replace(const char* pattern);
  void rimba_encode_tx();
  void setupTxTX(const char* op, const STACK& stack);
  void report(const std::string& match, long long row, long long col, const char* outcome);

  OP_Tp Tp;
  std::optional<OP_Tv> Tv;
  bool TP_mark = false;
  AI_ATTRIBUTES attributes;
  std::vector<AI_TxTX> TxTX;
  size_t TxTX_index = 0;
  bool decoded = false;

  // What "-report" needs to remember: the placeholders already reported, and the fonts set
  // by the current pass. Made only when the run is reported.
  struct REPORT_NOTES {
    std::set<std::string> reported;
    std::map<std::string, std::string> fonts_set;
  };
  REPORT_NOTES& report_notes();
  std::unique_ptr<REPORT_NOTES> notes;
  ANALYSED_STATE<std::vector<AI_TxTX>> analysed;
};
