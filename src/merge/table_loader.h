// Reads each table argument in the form "-table=" names: the bytes as they stand (raw), or
// Unicode text of tab- or comma-separated values (tsv, csv) converted into the encoding of
// the document's text, which "-encoding=" names or the template tells.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>

#include "table/tab_text.h"

class AI_DOCUMENT;
class CHARSET;
class UTF8_FROM;
class REPORT;
struct SETTINGS;

// A table argument cut at its first "=": "ID=file" gives the text placeholders of ID their
// cells; with a "-" before the "=", "PREFIX-ID=file" points placed art of ID at new EPS
// files (the prefix is not looked at).
struct TABLE_ARGUMENT {
  std::string id;
  std::string file;
  bool placed = false;
  // The one table of a run whose argument holds no "=": it gives the text placeholders of
  // every identifier their cells.
  bool every_id = false;
};
// Nothing when the argument holds no "=".
std::optional<TABLE_ARGUMENT> cut_table_argument(const std::string& arg);

class TABLE_LOADER {
 public:
  // Opens the conversions that "-encoding=" and "-table-encoding=" name at once, so that a
  // name iconv does not know stops the run before the template is read. Findings go to
  // report.
  TABLE_LOADER(const SETTINGS& settings, REPORT& report);
  ~TABLE_LOADER();
  TABLE_LOADER(const TABLE_LOADER&) = delete;
  TABLE_LOADER& operator=(const TABLE_LOADER&) = delete;

  // Reads file, named as the command line gives it, into table; in raw form with "-report",
  // reports the cells that would break their strings, and more than max_records rows fail
  // the run.
  void load(const std::string& file, const AI_DOCUMENT& doc, TAB_TEXT& table,
            size_t max_records = TAB_TEXT::kMaxRecords);
  // The encoding that spreadsheet tables were converted into; empty before the first.
  std::string encoding() const;

 private:
  const SETTINGS& with;
  REPORT& findings;
  std::unique_ptr<CHARSET> charset;
  std::unique_ptr<UTF8_FROM> from_table_encoding;
  bool encoding_told = false;  // whether the report says which encoding and why
};
