// The owner of a run. It holds what every part of the run shares: the settings, the output
// chosen from them, the source of placed art, the report, the expansion budget and the
// reader of point texts, and the document with the flat list of its replaceable objects,
// made once by the analysis. Applying a table, restoring the template for the next document
// of a batch, reporting and printing each walk that list.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "document/replaceables.h"
#include "support/report.h"
#include "text/point_text.h"
#include "text/point_text_reader.h"

class AI_DOCUMENT;
class ART_SOURCES;
class Output;
class PRINTER;
class TAB_TEXT;
struct SETTINGS;
struct TABLE_ARGUMENT;

class MERGE {
 public:
  // The report starts, on or off as the settings say.
  explicit MERGE(const SETTINGS& run_settings);
  MERGE(const MERGE&) = delete;
  MERGE& operator=(const MERGE&) = delete;
  // Frees the document, or leaves it to the process's exit when the settings say so.
  ~MERGE();

  // Reads the template as the output reads it and analyses it.
  void read_template(const std::string& path);
  // A new document from the template as analysed: every object a table changed goes back
  // to its analysed state, the report starts again and the budget holds the template's
  // share.
  void start_document();
  // Applies table to the document as the tables before left it; the budget grows by the
  // table's bytes.
  void apply(const TABLE_ARGUMENT& argument, const TAB_TEXT& table);
  // The new document, its closing line included; what is written refers to the template's
  // bytes until out is flushed.
  void print(Output& out);
  // The report's closing lines of a document: the placeholders no table reached.
  void report_unreplaced();
  // The report's lines about the parts of the template that the output leaves out.
  void report_not_copied();

  const SETTINGS& settings() const { return with; }
  // The file on disk that a placed-art cell of identifier id names, if it names one.
  std::optional<std::string> art_path(std::string_view id, std::string_view cell, bool string_body);
  REPORT& report() { return lines; }
  const AI_DOCUMENT& document() const { return *doc; }
  // For a batch, which prints the same template many times (see TEMPLATE).
  void remember_printed_lines();

 private:
  const SETTINGS& with;
  std::unique_ptr<PRINTER> printer;
  std::unique_ptr<ART_SOURCES> art;
  REPORT lines;
  EXPANSION_BUDGET budget;
  POINT_TEXT_READER reader;
  std::string joined;  // the strings of the text being replaced
  std::string room;    // the same as each cell goes in
  size_t template_bytes = 0;
  std::unique_ptr<AI_DOCUMENT> doc;
  REPLACEABLES objects;
};
