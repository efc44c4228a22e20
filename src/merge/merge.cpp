#include "merge/merge.h"

#include "document/ai_document.h"
#include "merge/table_loader.h"
#include "output/printer.h"
#include "placed/art_sources.h"
#include "placed/placed_art_replace.h"
#include "support/error.h"
#include "support/output.h"
#include "support/settings.h"
#include "table/tab_text.h"
#include "text/text_replace.h"

namespace {

// The document left to the exit. The pointer stays, so leak checkers see it held.
AI_DOCUMENT* left_to_exit = nullptr;

}  // namespace

MERGE::MERGE(const SETTINGS& run_settings)
    : with(run_settings), printer(make_printer(with)), art(std::make_unique<ART_SOURCES>(with)) {
  lines.start(with.report);
  lines.collect_problems(with.strict || with.each > 0);
}

MERGE::~MERGE() {
  objects.clear();
  if (!with.leave_document_to_exit || !doc) return;
  delete left_to_exit;
  left_to_exit = doc.release();
}

std::optional<std::string> MERGE::art_path(std::string_view id, std::string_view cell,
                                           bool string_body) {
  return art->for_id(id).path_of(cell, string_body);
}

void MERGE::read_template(const std::string& path) {
  FileBytes bytes = explained(with.strict, [&] { return TEMPLATE::read_file(path.c_str()); });
  template_bytes = bytes.view().size();
  budget.reset(template_bytes);
  doc = std::make_unique<AI_DOCUMENT>(printer->read(std::move(bytes)));
  objects = doc->analyze_doc(reader);
}

void MERGE::start_document() {
  for (REPLACEABLE& object : objects) {
    if (object.text) {
      object.text->point_text().restore_analysed();
    } else {
      object.placed_art->restore_analysed();
    }
  }
  lines.start(with.report);
  budget.reset(template_bytes);
}

// Every table goes to each object of its kind in document order; the report names the
// layer each stands in.
void MERGE::apply(const TABLE_ARGUMENT& argument, const TAB_TEXT& table) {
  budget.add(table.byte_count());
  lines.set_table(argument.file);
  const char* id = argument.every_id ? nullptr : argument.id.c_str();
  TEXT_REPLACING text_replacing{with, lines, budget, joined, room};
  ART_REPLACING art_replacing{with, lines, art->for_id(argument.id), argument.file};
  for (REPLACEABLE& object : objects) {
    lines.set_layer(object.layer);
    if (!argument.placed && object.text) {
      object.text->point_text().setup_tabtxt(id, table, text_replacing);
    } else if (argument.placed && object.placed_art) {
      object.placed_art->setup_tabtxt(id, table, art_replacing);
    }
  }
}

void MERGE::print(Output& out) {
  printer->print(*doc, objects, *art, lines, out);
}

void MERGE::report_unreplaced() {
  if (!lines.enabled() && !lines.collects_problems()) return;
  for (const REPLACEABLE& object : objects) {
    lines.set_layer(object.layer);
    if (object.text) {
      object.text->point_text().report_unreplaced(with, lines);
    } else {
      object.placed_art->report_unreplaced(lines);
    }
  }
}

void MERGE::report_not_copied() {
  if (!lines.enabled() && !lines.collects_problems()) return;
  printer->report_not_copied(*doc, lines);
}

void MERGE::remember_printed_lines() {
  doc->text().remember_printed_lines();
}
