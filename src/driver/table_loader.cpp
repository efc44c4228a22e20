#include "driver/table_loader.h"

#include "document/text_encoding.h"
#include "driver/options.h"
#include "support/charset.h"
#include "support/file_io.h"
#include "support/report.h"
#include "table/delimited_text.h"
#include "table/string_hazards.h"
#include "table/tab_text.h"

TABLE_LOADER::TABLE_LOADER() {
  if (!option_encoding.empty()) charset = std::make_unique<CHARSET>(option_encoding);
}

TABLE_LOADER::~TABLE_LOADER() = default;

void TABLE_LOADER::load(const std::string& file, const AI_DOCUMENT& doc, TAB_TEXT& table) {
  if (option_table == TABLE_FORM::raw) {
    table.init(file.c_str());
    if (run_report().enabled()) report_string_hazards(file, table);
    return;
  }
  if (!charset) charset = std::make_unique<CHARSET>(template_text_encoding(doc));
  const std::string bytes =
      read_whole_file(file.c_str(), "tab text file open error\n", "tab text file read error\n");
  const char32_t separator = option_table == TABLE_FORM::tsv ? '\t' : ',';
  DELIMITED_TEXT(bytes, separator, *charset, file).read(table);
}
