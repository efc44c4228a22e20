#include "document/sections.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "document/layer.h"
#include "support/error.h"
#include "support/output.h"
#include "template/template.h"
#include "text/point_text_reader.h"

// A comment that printing depends on: its absence ends the run.
static int require_comment(const TEMPLATE& tpl, int from, int to, const char* comment,
                           bool whole_line = false) {
  int index = tpl.find_comment(from, to, comment, whole_line);
  if (index < 0) fail("cannot find %s\n", comment);
  return index;
}

void LINE_RANGE::print_lines(const TEMPLATE& tpl, Output& out) const {
  tpl.print_lines(first_line, last_line, out);
}

void AI_HEADER::setup(const TEMPLATE& tpl) {
  first_line_text = tpl.line(0);
  last_line = tpl.find_comment(0, tpl.line_count() - 1, "%%EndComments", true);
}

void AI_PROCSET::setup(const TEMPLATE& tpl) {
  const int last = tpl.line_count() - 1;
  int begin = tpl.find_comment(0, last, "%%BeginProcSet");
  if (begin < 0) return;
  int end = tpl.find_comment(begin + 1, last, "%%EndProcSet");
  if (end < 0) return;
  first_line = begin;
  last_line = end;
}

void AI_PROLOG::setup(const TEMPLATE& tpl) {
  last_line = require_comment(tpl, 0, tpl.line_count() - 1, "%%EndProlog", true);
  header.setup(tpl);
  procset.setup(tpl);
}

void AI_SETUP::setup(const TEMPLATE& tpl, const LINE_RANGE& script) {
  first_line = require_comment(tpl, script.first_line, script.last_line, "%%BeginSetup");
  last_line = require_comment(tpl, first_line + 1, script.last_line, "%%EndSetup");
}

void AI_PAGE_TRAILER::setup(const TEMPLATE& tpl, const LINE_RANGE& script) {
  first_line = require_comment(tpl, script.first_line, script.last_line, "%%PageTrailer");
  last_line = require_comment(tpl, first_line + 1, script.last_line, "%%Trailer") - 1;
}

void AI_DOC_TRAILER::setup(const TEMPLATE& tpl, const LINE_RANGE& script) {
  first_line = require_comment(tpl, script.first_line, script.last_line, "%%Trailer");
  int eof = tpl.find_comment(first_line + 1, script.last_line, "%%EOF");
  ends_inside_last_line = eof < 0;
  last_line = eof < 0 ? script.last_line : eof - 1;
}

void AI_DOC_TRAILER::print_new(const TEMPLATE& tpl, Output& out) const {
  if (!ends_inside_last_line) {
    print_lines(tpl, out);
    return;
  }
  tpl.print_lines(first_line, last_line - 1, out);
  // The driver's "%%EOF" and carriage return complete the line.
  const std::string_view text = tpl.line(last_line);
  const char* eof = strpos(text.data(), static_cast<long long>(text.size()), "%%EOF", 1);
  if (eof) {
    out.write(text.substr(0, static_cast<size_t>(eof - text.data())));
  } else {
    out.line(text);
  }
}

AI_SCRIPT::AI_SCRIPT() = default;
AI_SCRIPT::~AI_SCRIPT() = default;

void AI_SCRIPT::setup(const TEMPLATE& tpl, POINT_TEXT_READER& reader) {
  const int last = tpl.line_count() - 1;
  first_line = require_comment(tpl, 0, last, "%%BeginSetup");
  int eof = tpl.find_comment(first_line + 1, last, "%%EOF");
  last_line = eof < 0 ? last : eof;
  setup_section.setup(tpl, *this);
  setup_layer(tpl, reader);
  page_trailer.setup(tpl, *this);
  doc_trailer.setup(tpl, *this);
  // Illustrator 3 and 4 documents, and later ones saved without layer comments, hold their
  // art between the setup and the page trailer; "-keep" finds its objects there.
  if (layers.empty() && tpl.keeps_bytes()) {
    layers.push_back(std::make_unique<AI_LAYER>(reader.kept_texts_memory()));
    layers.back()->setup_unmarked(tpl, setup_section.last_line, page_trailer.first_line, reader);
  }
}

void AI_SCRIPT::setup_layer(const TEMPLATE& tpl, POINT_TEXT_READER& reader) {
  auto begins_layer = [](std::string_view text) { return text.substr(0, 15) == "%AI5_BeginLayer"; };
  for (int i = first_line; (i = tpl.find_comment_line(i, last_line, "%AI5", begins_layer)) >= 0;) {
    if (layers.size() == kMaxLayers) fail("overflow layer\n");
    auto layer = std::make_unique<AI_LAYER>(reader.kept_texts_memory());
    layer->setup(tpl, i, last_line, &i, reader);
    layers.push_back(std::move(layer));
  }
}

void AI_SCRIPT::print_new(const TEMPLATE& tpl, Output& out) const {
  setup_section.print_lines(tpl, out);
  for (const auto& layer : layers) layer->print_new(tpl, out);
  page_trailer.print_lines(tpl, out);
  doc_trailer.print_new(tpl, out);
}
