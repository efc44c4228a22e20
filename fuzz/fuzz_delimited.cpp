// Fuzzes the reader of spreadsheet tables and the conversion into a document's encoding.
// The first byte chooses the separator (bit 0: tab or comma) and the encoding (bits 1 and
// 2); the rest is the table file. A table either fails with a message that names its place,
// or every cell is a string body that no byte of it can break.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "support/charset.h"
#include "support/error.h"
#include "support/escapes.h"
#include "table/delimited_text.h"
#include "table/tab_text.h"

namespace {

CHARSET& charset(unsigned choice) {
  static const char* const kNames[] = {"MACINTOSH", "WINDOWS-1252", "SHIFT_JIS", "UTF-8"};
  static std::unique_ptr<CHARSET> opened[4];
  if (!opened[choice]) opened[choice] = std::make_unique<CHARSET>(kNames[choice]);
  return *opened[choice];
}

// Only the escapes the reader writes, no byte that ends a string or a line, no tab (which
// separates a point text's runs), nothing left to escape.
bool is_safe_body(const char* cell) {
  const size_t length = std::strlen(cell);
  for (size_t i = 0; i < length; ++i) {
    const unsigned char byte = static_cast<unsigned char>(cell[i]);
    if (byte == '(' || byte == ')' || byte < 0x20 || byte == 0x7F) return false;
    if (byte != '\\') continue;
    if (++i == length) return false;
    if (std::strchr("\\()r", cell[i])) continue;
    if (i + 2 >= length || !std::strchr("0123", cell[i]) || !std::strchr("01234567", cell[i + 1]) ||
        !std::strchr("01234567", cell[i + 2])) {
      return false;
    }
    i += 2;
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const char32_t separator = (data[0] & 1) ? ',' : '\t';
  const std::string bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
  TAB_TEXT table;
  try {
    DELIMITED_TEXT(bytes, separator, charset((data[0] >> 1) & 3), "t.csv").read(table);
  } catch (const Error& error) {
    const std::string message = error.what();
    if (message.compare(0, 11, "t.csv: row ") != 0 || message.back() != '\n') std::abort();
    return 0;
  }
  for (long long row = 0; row < table.rec_count(); ++row) {
    if (!table.get_field(row, 0)) std::abort();  // every row has a cell
    for (long long col = 0; const char* cell = table.get_field(row, col); ++col) {
      if (!is_safe_body(cell)) std::abort();
      if (ps_string_escape(ps_string_decode(cell), false, true) != cell) std::abort();
    }
  }
  return 0;
}
