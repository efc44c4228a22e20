#include "text/kept_point_text.h"

#include "support/escapes.h"
#include "support/patches.h"
#include "text/point_text.h"
#include "text/point_text_reader.h"

namespace {

bool is_string(const PS_TOKEN& token) {
  return token.kind == PS_KIND::string || token.kind == PS_KIND::hex_string;
}

}  // namespace

void KEPT_POINT_TEXT::setup(std::string_view bytes, POINT_TEXT_READER& reader,
                            AI_POINT_TEXT& point_text) {
  point_text.read_decoded();
  PS_TOKENIZER tokens(bytes);
  PS_TOKEN token{};
  PS_TOKEN previous{PS_KIND::comment, {}};
  // A font is the name among the operands of its operator: the last one since the operator
  // before.
  std::string_view font_name;
  while (tokens.next(&token)) {
    if (token.kind == PS_KIND::comment) continue;
    // A string is the model's operand only in name: its bytes are taken from the token.
    const bool executable = token.kind == PS_KIND::executable;
    const TEXT_OP op = reader.read(is_string(token) ? std::string_view("()") : token.bytes,
                                   executable, point_text);
    if (token.kind == PS_KIND::literal_name) font_name = token.bytes;
    if (op != TEXT_OP::none)
      file(op, is_string(previous) ? &previous : nullptr, font_name, point_text);
    if (executable) font_name = {};
    previous = token;
  }
  runs.resize(point_text.runs().size());
}

// A run's string is its Tx or TX operand as decoded bytes; a run whose operand is no string
// has none. A run whose Tf names no font cannot take one from a placeholder.
void KEPT_POINT_TEXT::file(TEXT_OP op, const PS_TOKEN* operand, std::string_view font,
                           AI_POINT_TEXT& point_text) {
  const bool string_op = op == TEXT_OP::Tx || op == TEXT_OP::TX;
  const bool font_op = op == TEXT_OP::Tf;
  if (!string_op && !font_op) return;
  AI_TxTX& run = point_text.runs().back();
  runs.resize(point_text.runs().size());
  RUN& where = runs.back();
  if (font_op) {
    where.font_name = font;
    if (font.empty()) run.drop(TEXT_OP::Tf);
    return;
  }
  if (!operand) {
    run.drop_string();
    return;
  }
  where.string = *operand;
  where.text_read = run_text(ps_string_value(*operand));
  run.set_string(where.text_read);
}

void KEPT_POINT_TEXT::patch(const AI_POINT_TEXT& point_text, PATCHES& patches) const {
  for (size_t i = 0; i < runs.size(); ++i) {
    const AI_TxTX& run = point_text.runs()[i];
    const RUN& where = runs[i];
    const std::string* str = run.string();
    if (str && !where.string.bytes.empty() && *str != where.text_read) {
      patches.replace(where.string.bytes, ps_string_like(where.string, run_bytes(*str)));
    }
    if (run.font_replaced && run.has(TEXT_OP::Tf) && !where.font_name.empty()) {
      const bool underscore = where.font_name.substr(0, 2) == "/_";
      patches.replace(where.font_name, (underscore ? "/_" : "/") + run.font_name);
    }
  }
}
