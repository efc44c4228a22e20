// Fuzzes template loading, section analysis and printing.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "document/ai_document.h"
#include "support/error.h"
#include "support/output.h"
#include "text/point_text_reader.h"

namespace {

// The lines as the byte-by-byte definition cuts the bytes they cover: at CRs, a LF right after
// a CR belonging to the line end, each line's text ending at its first NUL.
std::vector<std::string_view> reference_lines(std::string_view bytes) {
  std::vector<std::string_view> lines;
  for (size_t start = 0; start < bytes.size();) {
    const size_t cr = bytes.find('\r', start);
    const std::string_view line = bytes.substr(start, cr - start);
    lines.push_back(line.substr(0, line.find('\0')));
    start = cr + (cr + 1 < bytes.size() && bytes[cr + 1] == '\n' ? 2 : 1);
  }
  return lines;
}

// The index keeps only some line starts and finds the others: every line, looked up from the
// last to the first, must be the one the definition gives. (A template of one line may be
// one without a line end, which then runs to the end of the text, whatever follows.)
void check_lines(const TEMPLATE& tpl) {
  const int count = tpl.line_count();
  if (count < 2 || tpl.keeps_bytes()) return;
  const std::vector<std::string_view> lines = reference_lines(tpl.bytes_of_lines(0, count - 1));
  if (static_cast<int>(lines.size()) != count) std::abort();
  for (int i = count - 1; i >= 0; --i) {
    if (tpl.line(i) != lines[static_cast<size_t>(i)]) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Output out;
  try {
    AI_DOCUMENT doc(
        std::make_unique<TEMPLATE>(std::string(reinterpret_cast<const char*>(data), size)));
    POINT_TEXT_READER reader;
    check_lines(doc.text());
    doc.analyze_doc(reader);
    doc.print_new(out);
  } catch (const Error& error) {
    // Failures are found before printing: a failed template prints nothing.
    if (!out.text().empty() || error.what()[0] == '\0') std::abort();
  }
  return 0;
}
