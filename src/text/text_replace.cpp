#include "text/text_replace.h"

#include <string>
#include <string_view>

#include "document/ai_document.h"
#include "driver/diagnostics.h"
#include "support/stack.h"
#include "support/token.h"

namespace {

// Each operator sees the words read since the previous one, at most this many.
constexpr int kStackBound = 10;

// Whether the runs' strings, joined without separators, hold a placeholder of the plain
// syntax (which a placeholder of the syntax with a font contains too).
bool holds_placeholder(const AI_POINT_TEXT& point_text) {
  std::optional<std::string> joined = point_text.TxTXstring(nullptr);
  return joined && holds_plain_placeholder(*joined);
}

}  // namespace

bool holds_plain_placeholder(std::string_view text) {
  auto digit = [&text](size_t i) { return i < text.size() && text[i] >= '0' && text[i] <= '9'; };
  for (size_t dash = text.find('-'); dash != std::string_view::npos;
       dash = text.find('-', dash + 1)) {
    if (dash == 0 || text[dash - 1] < 'A' || text[dash - 1] > 'Z' || !digit(dash + 1)) continue;
    size_t p = dash + 1;
    while (digit(p)) ++p;
    if (p < text.size() && text[p] == '-' && digit(p + 1)) return true;
  }
  return false;
}

bool may_end_placeholder(std::string_view bytes) {
  for (size_t p = bytes.find('-'); p != std::string_view::npos; p = bytes.find('-', p + 1)) {
    if (p + 2 >= bytes.size()) return true;
    const char next = bytes[p + 1];
    const char after = bytes[p + 2];
    if ((next >= '0' && next <= '9') || next == ')' || after == ' ' || after == '\r' ||
        after == '\0') {
      return true;
    }
  }
  return false;
}

bool AI_TEXT_REPLACE::may_hold_placeholder(const AI_DOCUMENT& doc, int first, int last) {
  return first < last && may_end_placeholder(doc.bytes_of_lines(first, last - 1));
}

bool AI_TEXT_REPLACE::setup(const AI_DOCUMENT& doc, int first, int last) {
  // Long words are an error only in a point text that is to be replaced; any other text
  // object is written as read, whatever it holds. One stack serves every object, so that
  // its words keep their storage from one object to the next.
  static STACK stack(true);
  stack.clear();
  TOKEN token;
  for (int i = first; i < last; ++i) {
    token.init(doc.line(i), " ");
    std::string_view view;
    while (token.next(&view)) {
      stack.push_bounded(view, kStackBound);
      const char* word = stack.peek(0);
      if (!AI_POINT_TEXT::is_operator(word)) continue;
      point_text.setup(word, stack);
      stack.free_all();
    }
  }
  if (!holds_placeholder(point_text)) return false;
  if (stack.overlong_seen()) fail("STACK_OBJ::str size error\n");
  return true;
}
