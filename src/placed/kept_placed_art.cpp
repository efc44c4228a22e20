#include "placed/kept_placed_art.h"

#include <cstdio>
#include <vector>

#include "placed/art_source.h"
#include "placed/placed_art_replace.h"
#include "support/escapes.h"
#include "support/numbers.h"
#include "support/patches.h"
#include "support/report.h"
#include "template/template.h"

namespace {

// The placement's tokens before its backquote, oldest first.
constexpr size_t kPlacementTokens = 13;

bool shaped_as_placement(const std::vector<PS_TOKEN>& t) {
  const size_t n = t.size();
  if (n < kPlacementTokens) return false;
  const PS_TOKEN* p = &t[n - kPlacementTokens];
  auto is = [](const PS_TOKEN& token, PS_KIND kind) { return token.kind == kind; };
  if (p[0].bytes != "[" || p[7].bytes != "]") return false;
  for (int i : {1, 2, 3, 4, 5, 6, 8, 9, 10, 11}) {
    if (!is(p[i], PS_KIND::number)) return false;
  }
  return is(p[12], PS_KIND::string) || is(p[12], PS_KIND::hex_string);
}

}  // namespace

std::string placement_number(double value) {
  char text[64];
  std::snprintf(text, sizeof text, "%.6f", value);
  std::string number(text);
  if (number.find('.') != std::string::npos) {
    number.erase(number.find_last_not_of('0') + 1);
    if (number.back() == '.') number.pop_back();
  }
  return number == "-0" ? "0" : number;
}

void KEPT_PLACEMENT::setup(const TEMPLATE& tpl, int first, int last, AI_PLACED_ART_REPLACE& art) {
  block = tpl.bytes_of_lines(first, last);
  std::vector<std::string_view> parts;
  const int begin = tpl.find_comment(first, last - 1, "%%BeginDocument");
  const int end = begin < 0 ? -1 : tpl.find_comment(begin + 1, last - 1, "%%EndDocument");
  if (end >= 0) {
    const std::string_view line = tpl.bytes_of_lines(begin, begin);
    begin_document = tpl.line(begin);
    begin_line_end = line.substr(begin_document.size());
    document_body = begin + 1 < end ? tpl.bytes_of_lines(begin + 1, end - 1)
                                    : tpl.bytes_of_lines(end, end).substr(0, 0);
    if (begin > first) parts.push_back(tpl.bytes_of_lines(first, begin - 1));
    if (end + 1 < last) parts.push_back(tpl.bytes_of_lines(end + 1, last - 1));
  } else if (first < last) {
    parts.push_back(tpl.bytes_of_lines(first, last - 1));
  }
  std::vector<PS_TOKEN> seen;
  for (std::string_view part : parts) {
    PS_TOKENIZER tokens(part);
    PS_TOKEN token{};
    while (tokens.next(&token)) {
      if (token.kind == PS_KIND::comment) continue;
      // A later placement in the block takes the place of an earlier one.
      if (token.kind == PS_KIND::executable && token.bytes == "`" && shaped_as_placement(seen)) {
        const PS_TOKEN* p = &seen[seen.size() - kPlacementTokens];
        int n = 0;
        for (int i : {1, 2, 3, 4, 5, 6, 8, 9, 10, 11}) numbers[n++] = p[i];
        file = p[12];
        backquote = token;
        placed = true;
      }
      seen.push_back(token);
      if (seen.size() > kPlacementTokens) seen.erase(seen.begin());
    }
  }
  if (!placed) return;
  for (int i = 0; i < 10; ++i) numbers_read[i] = to_double(numbers[i].bytes);
  // The name is matched decoded, as point-text strings are.
  file_read = "(" + ps_string_value(file) + ")";
  art.setup_bquote(numbers[0].bytes, numbers[1].bytes, numbers[2].bytes, numbers[3].bytes,
                   numbers[4].bytes, numbers[5].bytes, numbers[6].bytes, numbers[7].bytes,
                   numbers[8].bytes, numbers[9].bytes, file_read);
}

void KEPT_PLACEMENT::patch(const AI_PLACED_ART_REPLACE& art, REPORT& report,
                           PATCHES& patches) const {
  if (art.removed) {
    patches.replace(block, "");
    return;
  }
  if (!placed) return;
  for (int i = 0; i < 10; ++i) {
    const double value = i < 6 ? art.bquote.matrix[i] : art.bquote.bbox[i - 6];
    if (value != numbers_read[i]) patches.replace(numbers[i].bytes, placement_number(value));
  }
  const std::string& now = art.bquote.file_string;
  if (now == file_read) return;
  // The model writes a new file string as the cell in parentheses; the cell is the body
  // of a PostScript string.
  const std::string cell = now.substr(1, now.size() - 2);
  patches.replace(file.bytes, ps_string_like(file, ps_string_decode(cell)));
  if (!begin_document.empty() || art.new_art_generated) embed(cell, art, report, patches);
}

void KEPT_PLACEMENT::embed(const std::string& cell, const AI_PLACED_ART_REPLACE& art,
                           REPORT& report, PATCHES& patches) const {
  const std::optional<std::string>& path = art.new_file;
  const std::optional<std::string_view> postscript =
      path && art.new_source ? art.new_source->postscript(*path) : std::nullopt;
  if (!postscript) {
    report.note("placed art", "(" + cell + ")",
                "old embedded art kept, cannot read " + (path ? *path : cell));
    return;
  }
  std::string name = ps_string_decode(cell);
  for (char& c : name) {
    if (c == '\r' || c == '\n') c = ' ';
  }
  if (begin_document.empty()) {
    embed_in_linked(name, *postscript, patches);
    return;
  }
  patches.replace(begin_document, "%%BeginDocument: " + name);
  patches.replace_by_view(document_body, *postscript);
  const char last = postscript->empty() ? '\n' : postscript->back();
  if (last != '\r' && last != '\n') {
    patches.replace(document_body.substr(document_body.size()), std::string(begin_line_end));
  }
}

// The block's own line end (that of its first line) ends the lines it gets.
void KEPT_PLACEMENT::embed_in_linked(const std::string& name, std::string_view postscript,
                                     PATCHES& patches) const {
  const size_t first_end = block.find_first_of("\r\n");
  std::string line_end = "\r";
  if (first_end != std::string_view::npos) {
    line_end =
        std::string(block.substr(first_end, block.compare(first_end, 2, "\r\n") == 0 ? 2 : 1));
  }
  const std::string_view after(backquote.bytes.data() + backquote.bytes.size(), 0);
  patches.replace(after, line_end + "%%BeginDocument: " + name + line_end);
  patches.replace_by_view(after, postscript);
  const char last = postscript.empty() ? '\n' : postscript.back();
  patches.replace(after, (last == '\r' || last == '\n' ? "" : line_end) + "%%EndDocument");
}
