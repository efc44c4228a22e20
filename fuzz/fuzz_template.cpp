// Fuzzes template loading, section analysis and printing.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "document/ai_document.h"
#include "support/error.h"
#include "support/output.h"
#include "text/point_text_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Output out;
  try {
    AI_DOCUMENT doc(
        std::make_unique<TEMPLATE>(std::string(reinterpret_cast<const char*>(data), size)));
    POINT_TEXT_READER reader;
    doc.analyze_doc(reader);
    doc.print_new(out);
  } catch (const Error& error) {
    // Failures are found before printing: a failed template prints nothing.
    if (!out.text().empty() || error.what()[0] == '\0') std::abort();
  }
  return 0;
}
