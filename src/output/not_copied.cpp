#include "output/not_copied.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "document/ai_document.h"
#include "document/layer.h"
#include "support/report.h"
#include "template/template.h"

namespace {

// A range of the template's bytes, named by line numbers or, outside the document, by its
// length.
struct DROPPED {
  size_t from;
  size_t to;
  std::string what;
  bool by_lines;
};

// A printed part of the default output and how its first and last lines are named.
struct PART {
  int first;
  int last;
  std::string begins;
  std::string ends;
};

// Line numbers as an editor shows them: from 1, each CR LF, CR or LF ending a line. Offsets
// are asked for in ascending order.
class LINE_NUMBERS {
 public:
  explicit LINE_NUMBERS(std::string_view source) : bytes(source) {}
  long long at(size_t offset) {
    for (; done < offset; ++done) {
      const char c = bytes[done];
      if (c == '\n' || (c == '\r' && (done + 1 == bytes.size() || bytes[done + 1] != '\n'))) {
        ++line;
      }
    }
    return line;
  }

 private:
  std::string_view bytes;
  size_t done = 0;
  long long line = 1;
};

std::vector<PART> printed_parts(const AI_DOCUMENT& doc) {
  const AI_SCRIPT& script = *doc.get_script();
  std::vector<PART> parts = {{0, doc.get_prolog()->last_line, "%!PS-Adobe", "%%EndProlog"},
                             {script.setup_section.first_line, script.setup_section.last_line,
                              "%%BeginSetup", "%%EndSetup"}};
  for (int i = 0; i < script.layer_count(); ++i) {
    const std::string name = "layer " + std::to_string(i + 1);
    parts.push_back({script.layer(i).first_line, script.layer(i).last_line, name, name});
  }
  parts.push_back({script.page_trailer.first_line, script.page_trailer.last_line, "%%PageTrailer",
                   "%%PageTrailer"});
  parts.push_back(
      {script.doc_trailer.first_line, script.doc_trailer.last_line, "%%Trailer", "%%Trailer"});
  // The closing "%%EOF" that the default output writes stands for the script's last line.
  parts.push_back({script.last_line, script.last_line, "%%EOF", "%%EOF"});
  std::stable_sort(parts.begin(), parts.end(),
                   [](const PART& a, const PART& b) { return a.first < b.first; });
  return parts;
}

// The lines the default output leaves out between its parts.
void add_line_gaps(const AI_DOCUMENT& doc, std::vector<DROPPED>& dropped) {
  const TEMPLATE& tpl = doc.text();
  auto add = [&](int first, int last, const std::string& what) {
    const std::string_view bytes = tpl.bytes_of_lines(first, last);
    dropped.push_back({tpl.source_offset(bytes.data(), true),
                       tpl.source_offset(bytes.data() + bytes.size(), false), what, true});
  };
  const std::vector<PART> parts = printed_parts(doc);
  int covered = -1;
  const PART* before = nullptr;
  for (const PART& part : parts) {
    if (part.first > covered + 1) {
      add(covered + 1, part.first - 1, "between " + before->ends + " and " + part.begins);
    }
    if (part.last > covered) {
      covered = part.last;
      before = &part;
    }
  }
  if (covered < tpl.line_count() - 1) {
    add(covered + 1, tpl.line_count() - 1, "after " + before->ends);
  }
}

}  // namespace

void report_not_copied(const AI_DOCUMENT& doc, bool copies_whole_text, REPORT& report) {
  const TEMPLATE& tpl = doc.text();
  const std::string_view source = tpl.source();
  const std::string_view kept = tpl.bytes_of_lines(0, tpl.line_count() - 1);
  const size_t start = tpl.source_offset(kept.data(), true);
  const size_t end = tpl.source_offset(kept.data() + kept.size(), false);
  std::vector<DROPPED> dropped;
  if (start > 0) dropped.push_back({0, start, "before %!PS-Adobe", false});
  if (end < source.size())
    dropped.push_back({end, source.size(), "after the last %%EOF line", false});
  if (!copies_whole_text) {
    for (const TEMPLATE::CUT& cut : tpl.cut_out()) {
      if (cut.from >= start && cut.to <= end) {
        dropped.push_back({cut.from, cut.to, "an embedded document", true});
      }
    }
    add_line_gaps(doc, dropped);
  }
  std::stable_sort(dropped.begin(), dropped.end(),
                   [](const DROPPED& a, const DROPPED& b) { return a.from < b.from; });
  LINE_NUMBERS numbers(source);
  size_t reported_to = 0;
  for (const DROPPED& range : dropped) {
    if (range.to <= range.from || range.to <= reported_to) continue;  // inside one reported
    reported_to = range.to;
    if (!range.by_lines) {
      report.add_line("not copied: " + std::to_string(range.to - range.from) + " bytes " +
                      range.what);
      continue;
    }
    const long long first = numbers.at(range.from);
    const long long last = numbers.at(range.to - 1);
    const std::string lines = first == last
                                  ? "line " + std::to_string(first)
                                  : "lines " + std::to_string(first) + "-" + std::to_string(last);
    report.finding(PROBLEM::KIND::not_copied,
                   "not copied: " + lines + ", " + range.what + "; -keep copies them");
  }
}
