#include "document/sections.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "document/ai_document.h"
#include "document/layer.h"
#include "driver/diagnostics.h"
#include "support/output.h"
#include "support/report.h"

int find_comment(const AI_DOCUMENT& doc, int from, int to, const char* comment, bool whole_line) {
  const size_t length = std::strlen(comment);
  const std::string_view wanted(comment, length);
  return doc.find_comment_line(from, to, wanted.substr(0, 4), [&](std::string_view text) {
    return text.substr(0, length) == wanted && (!whole_line || text.size() == length);
  });
}

// A comment that printing depends on: its absence ends the run.
static int require_comment(const AI_DOCUMENT& doc, int from, int to, const char* comment,
                           bool whole_line = false) {
  int index = find_comment(doc, from, to, comment, whole_line);
  if (index < 0) fail("cannot find %s\n", comment);
  return index;
}

void LINE_RANGE::print_lines(const AI_DOCUMENT& doc, Output& out) const {
  doc.print_lines(first_line, last_line, out);
}

void AI_HEADER::setup(const AI_DOCUMENT& doc) {
  first_line_text = doc.line(0);
  last_line = find_comment(doc, 0, doc.line_count() - 1, "%%EndComments", true);
}

void AI_PROCSET::setup(const AI_DOCUMENT& doc) {
  const int last = doc.line_count() - 1;
  int begin = find_comment(doc, 0, last, "%%BeginProcSet");
  if (begin < 0) return;
  int end = find_comment(doc, begin + 1, last, "%%EndProcSet");
  if (end < 0) return;
  first_line = begin;
  last_line = end;
}

void AI_PROLOG::setup(const AI_DOCUMENT& doc) {
  last_line = require_comment(doc, 0, doc.line_count() - 1, "%%EndProlog", true);
  header.setup(doc);
  procset.setup(doc);
}

void AI_SETUP::setup(const AI_DOCUMENT& doc, const LINE_RANGE& script) {
  first_line = require_comment(doc, script.first_line, script.last_line, "%%BeginSetup");
  last_line = require_comment(doc, first_line + 1, script.last_line, "%%EndSetup");
}

void AI_PAGE_TRAILER::setup(const AI_DOCUMENT& doc, const LINE_RANGE& script) {
  first_line = require_comment(doc, script.first_line, script.last_line, "%%PageTrailer");
  last_line = require_comment(doc, first_line + 1, script.last_line, "%%Trailer") - 1;
}

void AI_DOC_TRAILER::setup(const AI_DOCUMENT& doc, const LINE_RANGE& script) {
  first_line = require_comment(doc, script.first_line, script.last_line, "%%Trailer");
  int eof = find_comment(doc, first_line + 1, script.last_line, "%%EOF");
  ends_inside_last_line = eof < 0;
  last_line = eof < 0 ? script.last_line : eof - 1;
}

void AI_DOC_TRAILER::print_new(const AI_DOCUMENT& doc, Output& out) const {
  if (!ends_inside_last_line) {
    print_lines(doc, out);
    return;
  }
  doc.print_lines(first_line, last_line - 1, out);
  // The driver's "%%EOF" and carriage return complete the line.
  const std::string_view text = doc.line(last_line);
  const char* eof = strpos(text.data(), static_cast<long long>(text.size()), "%%EOF", 1);
  if (eof) {
    out.write(text.substr(0, static_cast<size_t>(eof - text.data())));
  } else {
    out.line(text);
  }
}

AI_SCRIPT::AI_SCRIPT() = default;
AI_SCRIPT::~AI_SCRIPT() = default;

void AI_SCRIPT::setup(const AI_DOCUMENT& doc) {
  const int last = doc.line_count() - 1;
  first_line = require_comment(doc, 0, last, "%%BeginSetup");
  int eof = find_comment(doc, first_line + 1, last, "%%EOF");
  last_line = eof < 0 ? last : eof;
  setup_section.setup(doc, *this);
  setup_layer(doc);
  page_trailer.setup(doc, *this);
  doc_trailer.setup(doc, *this);
  // Illustrator 3 and 4 documents, and later ones saved without layer comments, hold their
  // art between the setup and the page trailer; "-keep" finds its objects there.
  if (layers.empty() && doc.keeps_bytes()) {
    layers.push_back(std::make_unique<AI_LAYER>());
    layers.back()->setup_unmarked(doc, setup_section.last_line, page_trailer.first_line);
  }
}

void AI_SCRIPT::setup_layer(const AI_DOCUMENT& doc) {
  auto begins_layer = [](std::string_view text) { return text.substr(0, 15) == "%AI5_BeginLayer"; };
  for (int i = first_line; (i = doc.find_comment_line(i, last_line, "%AI5", begins_layer)) >= 0;) {
    if (layers.size() == kMaxLayers) fail("overflow layer\n");
    auto layer = std::make_unique<AI_LAYER>();
    layer->setup(doc, i, last_line, &i);
    layers.push_back(std::move(layer));
  }
}

void AI_SCRIPT::print_new(const AI_DOCUMENT& doc, Output& out) const {
  setup_section.print_lines(doc, out);
  for (const auto& layer : layers) layer->print_new(doc, out);
  page_trailer.print_lines(doc, out);
  doc_trailer.print_new(doc, out);
}

// Every request goes to each layer in document order; the report names layers from 1.
template <typename Action>
void AI_SCRIPT::each_layer(Action action) const {
  for (size_t i = 0; i < layers.size(); ++i) {
    run_report().set_layer(static_cast<int>(i) + 1);
    action(*layers[i]);
  }
}

void AI_SCRIPT::setup_replace_text(const char* id, const TAB_TEXT& table) {
  each_layer([&](AI_LAYER& layer) { layer.setup_replace_text(id, table); });
}

void AI_SCRIPT::setup_replace_text(const TAB_TEXT& table) {
  each_layer([&](AI_LAYER& layer) { layer.setup_replace_text(table); });
}

void AI_SCRIPT::setup_replace_placed_art(const char* id, const TAB_TEXT& table) {
  each_layer([&](AI_LAYER& layer) { layer.setup_replace_placed_art(id, table); });
}

void AI_SCRIPT::report_unreplaced() const {
  each_layer([](const AI_LAYER& layer) { layer.report_unreplaced(); });
}

void AI_SCRIPT::restore_analysed() {
  for (auto& layer : layers) layer->restore_analysed();
}
