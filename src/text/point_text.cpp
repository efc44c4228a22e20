#include "text/point_text.h"

#include <cctype>
#include <cstring>
#include <map>
#include <string>

#include "driver/diagnostics.h"
#include "driver/options.h"
#include "support/escapes.h"
#include "support/numbers.h"
#include "support/output.h"
#include "support/patterns.h"
#include "support/regex.h"
#include "support/report.h"
#include "support/stack.h"
#include "support/strings.h"
#include "table/tab_text.h"

namespace {

// A walk whose cells keep bringing back placeholders is stopped once it has met this many
// placeholders (a kept one counts each time the walk starts again and passes it), or once
// the texts that all walks of the run have produced add up to more than this many bytes
// plus a multiple of the input: time and memory stay bounded by the input, however many
// point texts share the same expanding cells.
constexpr int kMaxMatches = 100000;
constexpr size_t kExpansionBytes = size_t{1} << 20;
constexpr size_t kExpansionFactor = 16;

// The bytes that the run's walks may still produce.
size_t expansion_pool = kExpansionBytes;

[[noreturn]] void endless_expansion(const std::string& match) {
  fail("endless expansion of placeholder %s\n", without_tabs(match).c_str());
}

}  // namespace

void reset_expansion_pool(size_t input_bytes) {
  expansion_pool = kExpansionBytes + kExpansionFactor * input_bytes;
}

void add_to_expansion_pool(size_t input_bytes) {
  expansion_pool += kExpansionFactor * input_bytes;
}

// Tp TP Ar Ap k K g G Tf Tr TV Tv Ta Tx TX Tt Tz Tl Tk TK Ts Xu Tq: every word of a point
// text passes here, so the test looks at the characters rather than at a list.
bool AI_POINT_TEXT::is_operator(const char* word) {
  const char first = word[0];
  if (first == '\0') return false;
  const char second = word[1];
  if (second == '\0') return first == 'k' || first == 'K' || first == 'g' || first == 'G';
  if (word[2] != '\0') return false;
  if (first == 'T') return std::strchr("pPfrVvaxXtzlkKsq", second) != nullptr;
  if (first == 'A') return second == 'r' || second == 'p';
  return first == 'X' && second == 'u';
}

void AI_POINT_TEXT::setup(const char* op, const STACK& stack) {
  if (std::strcmp(op, "Tp") == 0) {
    double v[7];
    for (int i = 0; i < 7; ++i) v[i] = to_double(stack.operand(7 - i));
    Tp.setup(v[0], v[1], v[2], v[3], v[4], v[5], v[6]);
  } else if (std::strcmp(op, "Tv") == 0) {
    Tv.emplace();
    Tv->setup(to_int(stack.operand(1)));
  } else if (std::strcmp(op, "TP") == 0) {
    TP_mark = true;
  } else if (std::strcmp(op, "Ap") == 0 || std::strcmp(op, "Ar") == 0) {
    attributes.create(op);
    attributes.setup(op, stack);
  } else {
    setupTxTX(op, stack);
  }
}

// Style operators gather into the run being filled; its Tx or TX string closes it.
void AI_POINT_TEXT::setupTxTX(const char* op, const STACK& stack) {
  if (TxTX_index == TxTX.size()) TxTX.emplace_back();
  TxTX.back().setup(op, stack);
  if (std::strcmp(op, "Tx") == 0 || std::strcmp(op, "TX") == 0) ++TxTX_index;
}

void AI_POINT_TEXT::print(Output& out) const {
  Tp.print(out);
  if (Tv) Tv->print(out);
  out.line(TP_mark ? "TP" : "");
  attributes.print(out);
  for (const AI_TxTX& run : TxTX) run.print(out);
}

std::optional<std::string> AI_POINT_TEXT::TxTXstring(const char* sep) const {
  std::optional<std::string> text;
  for (const AI_TxTX& run : TxTX) {
    const std::string* str = run.string();
    if (!str) continue;
    if (text) MY_STRING::cat(text, sep);
    MY_STRING::cat(text, str->c_str());
  }
  return text;
}

// False only when the text cannot hold a placeholder of id: an identifier of letters and
// digits stands as written in a placeholder that lies in one run. Each table argument visits
// every point text, and most hold no placeholder of its identifier.
bool AI_POINT_TEXT::may_hold_placeholder(const char* id) const {
  if (!id) return true;
  for (const char* c = id; *c; ++c) {
    if (!std::isalnum(static_cast<unsigned char>(*c))) return true;
  }
  const std::string* only = nullptr;
  for (const AI_TxTX& run : TxTX) {
    const std::string* str = run.string();
    if (!str) continue;
    if (only) return true;  // a placeholder may be spread over the runs
    only = str;
  }
  if (!only || only->find('\t') != std::string::npos) return only != nullptr;
  return only->find(std::string(id) + "-") != std::string::npos;
}

void AI_POINT_TEXT::setup_tabtxt(const char* id, const TAB_TEXT& tab) {
  if (notes) notes->fonts_set.clear();
  if (!may_hold_placeholder(id)) return;
  if (option_each > 0) analysed.keep([this] { return TxTX; });
  std::optional<std::string> text = TxTXstring("\t");
  const char* pattern = placeholder_pattern(id, option_rx == 1);
  if (option_rx == 1) font_replace(pattern);
  // A text that no cell reached keeps its runs as they are.
  if (text && setup_tabtxt_replace(*text, pattern, tab)) setup_tabtxt_split(*text);
  rimba_encode_tx();
}

// Each match is replaced everywhere in the text by its cell, followed by one tab when it
// held one, so that the text after it stays in a run of its own; then the walk starts again.
bool AI_POINT_TEXT::setup_tabtxt_replace(std::string& text, const char* pattern,
                                         const TAB_TEXT& tab) {
  MY_REGEX regex;
  if (!regex.compile(pattern)) {
    fail("%sAI_POINT_TEXT:setup_tabtxt_replace( char *, char *, TAB_TEXT *):regex compile error\n",
         regex.error_text().c_str());
  }
  regex.init_offset(text.c_str());
  int matches = 0;
  bool replaced = false;
  std::string match;
  std::set<std::string> kept;
  while (regex.match_next(match)) {
    if (++matches > kMaxMatches) endless_expansion(match);
    long long row = 0;
    long long col = 0;
    placeholder_cell(match, option_rx == 1, &row, &col);
    const char* cell = tab.get_field(row - 1, col - 1);
    const bool no_cell = !cell || !*cell;
    if (no_cell && option_rm != 1) {
      if (kept.insert(match).second) report(match, row, col, "kept: no cell");
      continue;
    }
    report(match, row, col, no_cell ? "removed" : "replaced");
    // A cell is the body of a PostScript string, as the template's strings are.
    std::string replacement = !cell ? "" : decoded ? run_text(ps_string_decode(cell)) : cell;
    if (match.find('\t') != std::string::npos) replacement += '\t';
    text = MY_STRING::replace(text, match, replacement);
    replaced = true;
    if (text.size() > expansion_pool) endless_expansion(match);
    expansion_pool -= text.size();
    regex.init_offset(text.c_str());
  }
  return replaced;
}

void AI_POINT_TEXT::report(const std::string& match, long long row, long long col,
                           const char* outcome) {
  if (!run_report().enabled()) return;
  const std::string placeholder = without_tabs(match);
  REPORT_NOTES& notes_here = report_notes();
  notes_here.reported.insert(placeholder);
  auto font = notes_here.fonts_set.find(placeholder);
  std::string what = outcome;
  if (font != notes_here.fonts_set.end()) what += ", font set to " + font->second;
  run_report().add("text", placeholder, row, col, what);
}

void AI_POINT_TEXT::restore_analysed() {
  analysed.restore([this](const std::vector<AI_TxTX>& runs) {
    TxTX = runs;
    notes.reset();
  });
}

AI_POINT_TEXT::REPORT_NOTES& AI_POINT_TEXT::report_notes() {
  if (!notes) notes = std::make_unique<REPORT_NOTES>();
  return *notes;
}

void AI_POINT_TEXT::report_unreplaced() const {
  std::optional<std::string> text = TxTXstring("\t");
  if (!text) return;
  MY_REGEX regex;
  regex.compile(placeholder_pattern(nullptr, option_rx == 1));
  regex.init_offset(text->c_str());
  std::string match;
  while (regex.match_next(match)) {
    const std::string placeholder = without_tabs(match);
    if (notes && notes->reported.count(placeholder)) continue;
    long long row = 0;
    long long col = 0;
    placeholder_cell(match, option_rx == 1, &row, &col);
    run_report().add("text", placeholder, row, col, "kept: no table for its identifier");
  }
}

// Gives the pieces between the tabs back to the runs that have a string, in order. A
// placeholder spread over several runs leaves fewer pieces than runs: the runs after the
// last piece receive the empty text, so no text is printed twice.
void AI_POINT_TEXT::setup_tabtxt_split(const std::string& text) {
  MY_STRING cutter;
  cutter.split("\t", text);
  std::optional<std::string> pending;
  int more = 1;
  bool last_given = false;
  for (AI_TxTX& run : TxTX) {
    if (!pending) pending = last_given ? std::string() : cutter.split(&more);
    if (std::string* str = run.string()) {
      *str = std::move(*pending);
      pending.reset();
      last_given = !more;
    } else if (!more) {
      break;
    }
  }
}
