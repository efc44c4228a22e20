// Fuzzes reading a tab-delimited table and addressing its cells.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "support/error.h"
#include "table/tab_text.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  TAB_TEXT table;
  try {
    table.init_from_bytes(std::string(reinterpret_cast<const char*>(data), size));
  } catch (const Error& error) {
    if (std::strcmp(error.what(), "overflow rec\n") != 0) std::abort();
    return 0;
  }
  for (long long row = -1; row <= table.rec_count(); ++row) {
    for (long long col = -1; col < 4; ++col) {
      const char* cell = table.get_field(row, col);
      if (cell && std::strchr(cell, '\t')) std::abort();  // a cell never holds a tab
    }
  }
  return 0;
}
