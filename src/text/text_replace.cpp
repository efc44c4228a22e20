#include "text/text_replace.h"

#include <string>
#include <string_view>

#include "document/ai_document.h"
#include "driver/diagnostics.h"
#include "support/patterns.h"
#include "support/stack.h"
#include "support/token.h"

namespace {

// Each operator sees the words read since the previous one, at most this many.
constexpr int kStackBound = 10;

// Whether the runs' strings, joined without separators, hold a placeholder of the plain
// syntax (which a placeholder of the syntax with a font contains too). Most texts have one
// string, which needs no joining.
bool holds_placeholder(const AI_POINT_TEXT& point_text) {
  const std::string* only = nullptr;
  for (const AI_TxTX& run : point_text.runs()) {
    if (!run.string()) continue;
    if (only) {
      std::optional<std::string> joined = point_text.TxTXstring(nullptr);
      return holds_plain_placeholder(*joined);
    }
    only = run.string();
  }
  return only && holds_plain_placeholder(*only);
}

}  // namespace

bool AI_TEXT_REPLACE::may_hold_placeholder(const AI_DOCUMENT& doc, int first, int last) {
  return first < last &&
         may_end_placeholder(doc.bytes_of_lines(first, last - 1), doc.keeps_bytes());
}

bool AI_TEXT_REPLACE::setup_kept(const AI_DOCUMENT& doc, int first, int last) {
  kept = std::make_unique<KEPT_POINT_TEXT>();
  return kept->setup(doc, first, last, point_text);
}

bool AI_TEXT_REPLACE::setup(const AI_DOCUMENT& doc, int first, int last) {
  // Long words are an error only in a point text that is to be replaced; any other text
  // object is written as read, whatever it holds. One stack serves every object, so that
  // its ring of words is made once.
  static STACK stack(true);
  stack.clear();
  TOKEN token;
  doc.each_line(first, last - 1, [&](std::string_view line) {
    token.init(line, " ");
    std::string_view view;
    while (token.next(&view)) {
      stack.push_bounded(view, kStackBound);
      const TEXT_OP op = text_operator(view);
      if (op == TEXT_OP::none) continue;
      point_text.setup(op, stack);
      stack.free_all();
    }
  });
  if (!holds_placeholder(point_text)) return false;
  if (stack.overlong_seen()) fail("STACK_OBJ::str size error\n");
  return true;
}
