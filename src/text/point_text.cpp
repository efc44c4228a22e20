#include "text/point_text.h"

#include <cstring>
#include <map>
#include <string>

#include "support/error.h"
#include "support/escapes.h"
#include "support/numbers.h"
#include "support/output.h"
#include "support/patterns.h"
#include "support/regex.h"
#include "support/report.h"
#include "support/settings.h"
#include "support/stack.h"
#include "support/strings.h"
#include "table/tab_text.h"

namespace {

// A walk whose cells keep bringing back placeholders is stopped once it has met this many
// placeholders (a kept one counts each time the walk starts again and passes it), or once
// the texts that all walks of the document have produced use up its EXPANSION_BUDGET: time
// and memory stay bounded by the input, however many point texts share the same expanding
// cells.
constexpr int kMaxMatches = 100000;

[[noreturn]] void endless_expansion(const std::string& match) {
  fail("endless expansion of placeholder %s\n", without_tabs(match).c_str());
}

}  // namespace

AI_POINT_TEXT::AI_POINT_TEXT(const AI_POINT_TEXT& parsed, std::pmr::memory_resource* memory)
    : Tp(parsed.Tp),
      Tv(parsed.Tv),
      attributes(parsed.attributes),
      TxTX(memory),
      run_open(parsed.run_open),
      TP_mark(parsed.TP_mark),
      decoded(parsed.decoded) {
  TxTX.reserve(parsed.TxTX.size());
  for (const AI_TxTX& run : parsed.TxTX) TxTX.emplace_back(run, memory);
}

void AI_POINT_TEXT::clear() {
  Tp = OP_Tp();
  Tv.reset();
  attributes = AI_ATTRIBUTES();
  TxTX.clear();
  run_open = false;
  TP_mark = false;
  decoded = false;
}

void AI_POINT_TEXT::setup(TEXT_OP op, const STACK& stack) {
  switch (op) {
    case TEXT_OP::none:
      break;
    case TEXT_OP::Tp: {
      double v[7];
      for (int i = 0; i < 7; ++i) v[i] = to_double(stack.operand(7 - i));
      Tp.setup(v[0], v[1], v[2], v[3], v[4], v[5], v[6]);
      break;
    }
    case TEXT_OP::Tv:
      Tv.emplace();
      Tv->setup(to_int(stack.operand(1)));
      break;
    case TEXT_OP::TP:
      TP_mark = true;
      break;
    case TEXT_OP::Ap:
    case TEXT_OP::Ar:
      attributes.create(op);
      attributes.setup(op, stack);
      break;
    default:
      setupTxTX(op, stack);
      break;
  }
}

// Style operators gather into the run being filled; its Tx or TX string closes it.
void AI_POINT_TEXT::setupTxTX(TEXT_OP op, const STACK& stack) {
  if (!run_open) TxTX.emplace_back(TxTX.get_allocator().resource());
  TxTX.back().setup(op, stack);
  run_open = op != TEXT_OP::Tx && op != TEXT_OP::TX;
}

void AI_POINT_TEXT::print(Output& out) const {
  Tp.print(out);
  if (Tv) Tv->print(out);
  out.line(TP_mark ? "TP" : "");
  attributes.print(out);
  for (const AI_TxTX& run : TxTX) run.print(out);
}

bool AI_POINT_TEXT::join_strings(const RUNS& runs, std::string_view sep, std::string& text) {
  bool any = false;
  text.clear();
  for (const AI_TxTX& run : runs) {
    const std::string* str = run.string();
    if (!str) continue;
    if (any) text += sep;
    text += *str;
    any = true;
  }
  return any;
}

const std::string* AI_POINT_TEXT::only_string(bool* several) const {
  const std::string* only = nullptr;
  *several = false;
  for (const AI_TxTX& run : TxTX) {
    const std::string* str = run.string();
    if (!str) continue;
    if (only) {
      *several = true;
      return nullptr;
    }
    only = str;
  }
  return only;
}

// False only when the text cannot hold a placeholder of id: an identifier of letters and
// digits stands as written in a placeholder that lies in one run. Each table argument visits
// every point text, and most hold no placeholder of its identifier.
bool AI_POINT_TEXT::may_hold_placeholder(const char* id) const {
  if (!id || !plain_identifier(id)) return true;
  bool several = false;
  const std::string* only = only_string(&several);
  if (several) return true;  // a placeholder may be spread over the runs
  if (!only || only->find('\t') != std::string::npos) return only != nullptr;
  const std::string_view key = id;
  for (size_t at = only->find(key); at != std::string::npos; at = only->find(key, at + 1)) {
    if (at + key.size() < only->size() && (*only)[at + key.size()] == '-') return true;
  }
  return false;
}

void AI_POINT_TEXT::setup_tabtxt(const char* id, const TAB_TEXT& tab, TEXT_REPLACING& with) {
  if (notes) notes->fonts_set.clear();
  if (!may_hold_placeholder(id)) return;
  // What the report needs of the strings as analysed, once cells go in as text.
  const bool reported = with.report.enabled() || with.report.collects_problems();
  if (with.settings.each > 0 || ((decoded || tab.escaped()) && reported)) {
    analysed.keep([this] { return TxTX; });
  }
  std::string& text = with.joined;
  const bool any = TxTXstring("\t", text);
  const bool plain_id = !id || plain_identifier(id);
  // A text that no cell reached keeps its runs as they are.
  bool replaced = false;
  if (with.settings.rx) {
    const char* pattern = placeholder_pattern(id, true);
    font_replace(pattern, tab, with);
    if (any) replaced = setup_tabtxt_replace(text, pattern, plain_id, tab, with);
  } else if (any && plain_id) {
    PLAIN_PLACEHOLDERS placeholders(id);
    replaced = setup_tabtxt_walk(text, placeholders, true, tab, with);
  } else if (any) {
    replaced = setup_tabtxt_replace(text, placeholder_pattern(id, false), false, tab, with);
  }
  if (replaced) setup_tabtxt_split(text);
  rimba_encode_tx(with.report);
}

bool AI_POINT_TEXT::setup_tabtxt_replace(std::string& text, const char* pattern, bool needs_dashes,
                                         const TAB_TEXT& tab, TEXT_REPLACING& with) {
  MY_REGEX regex;
  if (!regex.compile(pattern)) {
    fail("%sAI_POINT_TEXT:setup_tabtxt_replace( char *, char *, TAB_TEXT *):regex compile error\n",
         regex.error_text().c_str());
  }
  return setup_tabtxt_walk(text, regex, needs_dashes, tab, with);
}

// Each match is replaced everywhere in the text by its cell, followed by one tab when it
// held one, so that the text after it stays in a run of its own; then the walk starts again.
template <typename MATCHER>
bool AI_POINT_TEXT::setup_tabtxt_walk(std::string& text, MATCHER& matcher, bool needs_dashes,
                                      const TAB_TEXT& tab, TEXT_REPLACING& with) {
  matcher.init_offset(text.c_str());
  // A cell of a spreadsheet's table or of a text read by "-keep" is text: the walk goes on
  // after it, so what it holds is never taken for a placeholder. The default walk starts
  // again from the beginning.
  const bool cells_are_text = decoded || tab.escaped();
  int matches = 0;
  bool replaced = false;
  std::string match;
  std::set<std::string> kept;
  std::set<std::string> reported;
  while ((!needs_dashes || holds_two_dashes(text)) && matcher.match_next(match)) {
    if (++matches > kMaxMatches) endless_expansion(match);
    long long row = 0;
    long long col = 0;
    placeholder_cell(match, with.settings.rx, &row, &col);
    const char* cell = tab.get_field(row - 1, col - 1);
    const bool no_cell = !cell || !*cell;
    if (no_cell && !with.settings.rm) {
      if (kept.insert(match).second) report(match, row, col, "kept: no cell", with.report, true);
      continue;
    }
    if (!cells_are_text || reported.insert(match).second) {
      report(match, row, col, no_cell ? "removed" : "replaced", with.report);
    }
    // A cell is the body of a PostScript string, as the template's strings are.
    std::string made;  // the cell decoded, or followed by a tab
    std::string_view replacement = cell ? cell : "";
    if (cell && decoded) replacement = made = run_text(ps_string_decode(cell));
    if (match.find('\t') != std::string::npos) {
      replacement = made = std::string(replacement) + '\t';
    }
    replaced = true;
    if (cells_are_text) {
      cells_were_text = true;
      const size_t start = matcher.position() - match.size();
      text.replace(start, match.size(), replacement);
      matcher.init_offset(text.c_str());
      matcher.skip_to(start + replacement.size());
      if (!with.budget.take(text.size())) endless_expansion(match);
      continue;
    }
    MY_STRING::replace_in(text, match, replacement, with.room);
    if (!with.budget.take(text.size())) endless_expansion(match);
    matcher.init_offset(text.c_str());
  }
  return replaced;
}

void AI_POINT_TEXT::report(const std::string& match, long long row, long long col,
                           const char* outcome, REPORT& to, bool undone) {
  if (!to.enabled() && !to.collects_problems()) return;
  const std::string placeholder = without_tabs(match);
  REPORT_NOTES& notes_here = report_notes();
  notes_here.reported.insert(placeholder);
  auto font = notes_here.fonts_set.find(placeholder);
  std::string what = outcome;
  if (font != notes_here.fonts_set.end()) what += ", font set to " + font->second;
  if (undone) {
    to.undone(PROBLEM::KIND::no_cell, "text", placeholder, row, col, what);
  } else {
    to.add("text", placeholder, row, col, what);
  }
}

void AI_POINT_TEXT::restore_analysed() {
  analysed.restore([this](const RUNS& runs) {
    TxTX = runs;
    notes.reset();
    cells_were_text = false;
  });
}

AI_POINT_TEXT::REPORT_NOTES& AI_POINT_TEXT::report_notes() {
  if (!notes) notes = std::make_unique<REPORT_NOTES>();
  return *notes;
}

void AI_POINT_TEXT::report_unreplaced(const SETTINGS& settings, REPORT& report) const {
  std::string text;
  const bool as_analysed = cells_were_text && analysed.analysed();
  if (!join_strings(as_analysed ? *analysed.analysed() : TxTX, "\t", text)) return;
  MY_REGEX regex;
  regex.compile(placeholder_pattern(nullptr, settings.rx));
  regex.init_offset(text.c_str());
  std::string match;
  while (regex.match_next(match)) {
    const std::string placeholder = without_tabs(match);
    if (notes && notes->reported.count(placeholder)) continue;
    long long row = 0;
    long long col = 0;
    placeholder_cell(match, settings.rx, &row, &col);
    report.undone(PROBLEM::KIND::no_table, "text", placeholder, row, col,
                  "kept: no table for its identifier");
  }
}

// Gives the pieces between the tabs back to the runs that have a string, in order. A
// placeholder spread over several runs leaves fewer pieces than runs: the runs after the
// last piece receive the empty text, so no text is printed twice.
void AI_POINT_TEXT::setup_tabtxt_split(const std::string& text) {
  MY_STRING cutter;
  cutter.split("\t", text);
  std::optional<std::string_view> pending;
  int more = 1;
  bool last_given = false;
  for (AI_TxTX& run : TxTX) {
    if (!pending) pending = last_given ? std::string_view() : cutter.split(&more);
    if (std::string* str = run.string()) {
      str->assign(*pending);
      pending.reset();
      last_given = !more;
    } else if (!more) {
      break;
    }
  }
}
