#include "template/template.h"

#include <algorithm>
#include <string>

#include "support/error.h"
#include "support/output.h"

FileBytes TEMPLATE::read_file(const char* file_name) {
  return FileBytes::read(file_name, "ai file open error\n", "ai file read error\n");
}

// Embedded documents are rare, so the text is first cut as it is, watching for one. Where
// one shows up, or the quick cut cannot finish, the documents are cut out and the text is
// cut again; failures are decided on that second pass, in their proper order.
TEMPLATE::TEMPLATE(FileBytes file) : bytes(std::move(file)), text(bytes.view()) {
  if (lines.cut_at_crs(text, true)) return;
  eliminate_BeginEndDocument();
  lines.cut_at_crs(text, false);
}

TEMPLATE::TEMPLATE(FileBytes file, KEEP_BYTES) : bytes(std::move(file)), text(bytes.view()) {
  lines.cut_kept(text);
}

TEMPLATE::~TEMPLATE() = default;

namespace {

const char kBeginDocument[] = "%%BeginDocument";
const char kEndDocument[] = "%%EndDocument";

}  // namespace

// Embedded documents, from "%%BeginDocument" through "%%EndDocument" and the CR or CR LF
// after it, never reach the line table. They do not nest: the first end closes the cut.
// Only a template that holds one is copied.
void TEMPLATE::eliminate_BeginEndDocument() {
  const char* const base = text.data();
  const size_t size = text.size();
  std::string kept;
  size_t read = 0;
  while (const char* begin =
             strpos(base + read, static_cast<long long>(size - read), kBeginDocument, 0)) {
    const size_t begin_at = static_cast<size_t>(begin - base);
    const char* end = strpos(begin, static_cast<long long>(size - begin_at), kEndDocument, 0);
    if (!end) fail("cannot find %s\n", kEndDocument);
    size_t cut_end = static_cast<size_t>(end - base) + sizeof kEndDocument - 1;
    if (cut_end < size && base[cut_end] == '\r') {
      ++cut_end;
      if (cut_end < size && base[cut_end] == '\n') ++cut_end;
    }
    kept.append(base + read, begin_at - read);
    cuts.push_back({kept.size(), begin_at, cut_end});
    read = cut_end;
  }
  if (read == 0) return;
  kept.append(base + read, size - read);
  source_bytes = std::move(bytes);
  bytes = FileBytes(std::move(kept));
  text = bytes.view();
}

// The text after a cut stands in the source right after the cut.
size_t TEMPLATE::source_offset(const char* in_text, bool after_cut) const {
  const size_t at = static_cast<size_t>(in_text - text.data());
  auto before = [after_cut](size_t position, const CUT& cut) {
    return after_cut ? position < cut.text_at : position <= cut.text_at;
  };
  auto next = std::upper_bound(cuts.begin(), cuts.end(), at, before);
  if (next == cuts.begin()) return at;
  const CUT& last = *(next - 1);
  return at - last.text_at + last.to;
}

int TEMPLATE::find_comment(int from, int to, std::string_view comment, bool whole_line) const {
  return lines.find_comment_line(from, to, comment.substr(0, 4), [&](std::string_view line) {
    return line.substr(0, comment.size()) == comment && (!whole_line || line == comment);
  });
}

void TEMPLATE::print_lines(int first, int last, Output& out) const {
  if (!printed) {
    lines.print_lines(first, last, out);
    return;
  }
  auto found = printed->find(first);
  if (found == printed->end() || found->second.last != last) {
    found = printed->insert_or_assign(first, printed_range(first, last)).first;
  }
  const PRINTED_RANGE& range = found->second;
  out.write_kept(range.converted ? std::string_view(*range.converted)
                                 : text.substr(range.from, range.length));
}

// A range that prints as read is written from the template's bytes, the others from a copy
// with their line ends converted.
TEMPLATE::PRINTED_RANGE TEMPLATE::printed_range(int first, int last) const {
  Output converted;
  lines.print_lines(first, last, converted);
  const std::string_view as_read = lines.bytes_of_lines(first, last);
  if (converted.text() == as_read) {
    return {last, static_cast<size_t>(as_read.data() - text.data()), as_read.size(), nullptr};
  }
  return {last, 0, 0, std::make_unique<std::string>(converted.text())};
}

void TEMPLATE::remember_printed_lines() {
  printed = std::make_unique<PRINTED>();
}
