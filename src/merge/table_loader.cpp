#include "merge/table_loader.h"

#include "document/text_encoding.h"
#include "support/charset.h"
#include "support/error.h"
#include "support/file_io.h"
#include "support/report.h"
#include "support/settings.h"
#include "table/delimited_text.h"
#include "table/string_hazards.h"
#include "table/tab_text.h"

std::optional<TABLE_ARGUMENT> cut_table_argument(const std::string& arg) {
  const size_t equals = arg.find('=');
  if (equals == std::string::npos) return std::nullopt;
  TABLE_ARGUMENT cut;
  cut.file = arg.substr(equals + 1);
  const size_t dash = arg.find('-');
  cut.placed = dash < equals;
  cut.id = cut.placed ? arg.substr(dash + 1, equals - dash - 1) : arg.substr(0, equals);
  return cut;
}

TABLE_LOADER::TABLE_LOADER(const SETTINGS& settings, REPORT& report)
    : with(settings), findings(report) {
  if (!with.encoding.empty()) charset = std::make_unique<CHARSET>(with.encoding);
  if (!with.table_encoding.empty()) {
    from_table_encoding = std::make_unique<UTF8_FROM>(with.table_encoding);
  }
}

TABLE_LOADER::~TABLE_LOADER() = default;

std::string TABLE_LOADER::encoding() const {
  return charset ? charset->name() : std::string();
}

void TABLE_LOADER::load(const std::string& file, const AI_DOCUMENT& doc, TAB_TEXT& table,
                        size_t max_records) {
  if (with.table == TABLE_FORM::raw) {
    explained(with.strict, [&] { table.init(file.c_str(), max_records); });
    if (findings.enabled() || findings.collects_problems()) {
      report_string_hazards(file, table, findings);
    }
    return;
  }
  if (!charset || !encoding_told) {
    const char* why = "-encoding= names it";
    if (!charset) charset = std::make_unique<CHARSET>(template_text_encoding(doc, &why));
    findings.add_line("tables are converted into " + charset->name() + ": " + why);
    encoding_told = true;
  }
  std::string bytes = explained(with.strict, [&] {
    return read_whole_file(file.c_str(), "tab text file open error\n",
                           "tab text file read error\n");
  });
  if (from_table_encoding) bytes = from_table_encoding->convert(bytes);
  DELIMITED_TEXT reader(bytes,
                        with.table == TABLE_FORM::tsv ? '\t' : DELIMITED_TEXT::kCommaOrSemicolon,
                        *charset, file);
  reader.read(table);
  if (with.table == TABLE_FORM::csv) {
    findings.add_line(file + ": values separated by \"" +
                      (reader.separator_read() == ';' ? ";" : ",") + "\"");
  }
}
