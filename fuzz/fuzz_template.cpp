// Fuzzes template loading, section analysis and printing.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "document/ai_document.h"
#include "driver/diagnostics.h"
#include "driver/options.h"
#include "support/output.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  reset_options();
  Output out;
  try {
    AI_DOCUMENT doc(std::string(reinterpret_cast<const char*>(data), size));
    doc.analyze_doc();
    doc.print_new(out);
  } catch (const Error& error) {
    // Failures are found before printing: a failed template prints nothing.
    if (!out.text().empty() || error.what()[0] == '\0') std::abort();
  }
  return 0;
}
