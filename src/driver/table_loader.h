// Reads each table argument in the form "-table=" names: the bytes as they stand (raw), or
// Unicode text of tab- or comma-separated values (tsv, csv) converted into the encoding of
// the document's text, which "-encoding=" names or the template tells.
#pragma once

#include <memory>
#include <string>

class AI_DOCUMENT;
class CHARSET;
class TAB_TEXT;

class TABLE_LOADER {
 public:
  // Opens the conversion that "-encoding=" names at once, so that a name iconv does not know
  // stops the run before the template is read.
  TABLE_LOADER();
  ~TABLE_LOADER();
  TABLE_LOADER(const TABLE_LOADER&) = delete;
  TABLE_LOADER& operator=(const TABLE_LOADER&) = delete;

  // Reads file, named as the command line gives it, into table; in raw form with "-report",
  // reports the cells that would break their strings.
  void load(const std::string& file, const AI_DOCUMENT& doc, TAB_TEXT& table);

 private:
  std::unique_ptr<CHARSET> charset;
};
