// The parsed model of a replaceable point text: its placement and attributes and its text
// runs. Substitution joins the runs' strings with tabs, replaces every placeholder by the
// table cell it names, and hands the pieces back to the runs, so each run keeps its style.
#pragma once

#include <map>
#include <memory>
#include <memory_resource>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "support/analysed_state.h"
#include "textattr/point_attributes.h"
#include "textattr/text_run.h"

class Output;
class REPORT;
class STACK;
class TAB_TEXT;
struct SETTINGS;

// What placeholder replacement may produce in one document, all point texts together: 1 MiB
// plus 16 times the input. A document starts it with its template's size and adds each
// table's size.
class EXPANSION_BUDGET {
 public:
  void reset(size_t input_bytes) { left = kBytes + kFactor * input_bytes; }
  void add(size_t input_bytes) { left += kFactor * input_bytes; }
  // Takes bytes from what is left; false when they are more.
  bool take(size_t bytes) {
    if (bytes > left) return false;
    left -= bytes;
    return true;
  }

 private:
  static constexpr size_t kBytes = size_t{1} << 20;
  static constexpr size_t kFactor = 16;
  size_t left = kBytes;
};

// What replacing the placeholders of a text needs of its run.
struct TEXT_REPLACING {
  const SETTINGS& settings;
  REPORT& report;
  EXPANSION_BUDGET& budget;
  std::string& joined;  // room for a text's joined strings, made once for the run
  std::string& room;    // room for the text as each cell goes in
};

class AI_POINT_TEXT {
 public:
  // memory: where the runs and their operands are kept, which stay as the analysis read them.
  explicit AI_POINT_TEXT(std::pmr::memory_resource* memory = std::pmr::get_default_resource())
      : TxTX(memory) {}
  // A copy of a text as read, kept in memory in no more room than it needs: a reader fills
  // one model of its own, whose runs grow as operators come, and copies only the texts that
  // hold a placeholder.
  AI_POINT_TEXT(const AI_POINT_TEXT& parsed, std::pmr::memory_resource* memory);

  // Back to a text with nothing read, keeping the room of the runs' table.
  void clear();

  // Files one operator; it is the newest word of stack, its operands the words below.
  void setup(TEXT_OP op, const STACK& stack);
  void print(Output& out) const;
  // The runs' strings joined with sep into text, every byte of them; false when no run has
  // a string.
  bool TxTXstring(std::string_view sep, std::string& text) const {
    return join_strings(TxTX, sep, text);
  }
  // The string of the one run that has one; null when none has, or when several have
  // (*several is then set).
  const std::string* only_string(bool* several) const;

  // Replaces the placeholders of identifier id (every identifier when id is null).
  void setup_tabtxt(const char* id, const TAB_TEXT& tab, TEXT_REPLACING& with);
  // Reports the placeholders that no table argument has reached.
  void report_unreplaced(const SETTINGS& settings, REPORT& report) const;
  // Returns to the runs as analysed, for the next document of a batch ("-each=").
  void restore_analysed();

  // For a text read by "-keep": the runs' strings hold decoded bytes (as run_text writes
  // them), so cells and numeral codes go into them decoded too.
  void read_decoded() { decoded = true; }
  using RUNS = std::pmr::vector<AI_TxTX>;
  RUNS& runs() { return TxTX; }
  const RUNS& runs() const { return TxTX; }

 private:
  static bool join_strings(const RUNS& runs, std::string_view sep, std::string& text);
  bool may_hold_placeholder(const char* id) const;
  // Replaces in text; whether any placeholder was replaced or removed.
  // needs_dashes: whether every match holds two dashes.
  bool setup_tabtxt_replace(std::string& text, const char* pattern, bool needs_dashes,
                            const TAB_TEXT& tab, TEXT_REPLACING& with);
  // The walk of setup_tabtxt_replace with a MY_REGEX or the PLAIN_PLACEHOLDERS that stand
  // for the plain pattern of a plain identifier.
  template <typename MATCHER>
  bool setup_tabtxt_walk(std::string& text, MATCHER& matcher, bool needs_dashes,
                         const TAB_TEXT& tab, TEXT_REPLACING& with);
  void setup_tabtxt_split(const std::string& text);
  void font_replace(const char* pattern, const TAB_TEXT& tab, const TEXT_REPLACING& with);
  void rimba_encode_tx(REPORT& report);
  void setupTxTX(TEXT_OP op, const STACK& stack);
  // A placeholder's line in the report; a problem too when it was left without its cell.
  void report(const std::string& match, long long row, long long col, const char* outcome,
              REPORT& to, bool undone = false);

  OP_Tp Tp;
  std::optional<OP_Tv> Tv;
  AI_ATTRIBUTES attributes;
  RUNS TxTX;
  // Whether the last run still waits for the string that closes it.
  bool run_open = false;
  bool TP_mark = false;
  bool decoded = false;
  // Whether a cell went in as text (see setup_tabtxt_walk): the placeholders left are then
  // those of the strings as analysed.
  bool cells_were_text = false;

  // What "-report" needs to remember: the placeholders already reported, and the fonts set
  // by the current pass. Made only when the run is reported.
  struct REPORT_NOTES {
    std::set<std::string> reported;
    std::map<std::string, std::string> fonts_set;
  };
  REPORT_NOTES& report_notes();
  std::unique_ptr<REPORT_NOTES> notes;
  ANALYSED_STATE<RUNS> analysed;
};
