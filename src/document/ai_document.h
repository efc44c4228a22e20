// The document: its template and the section tree over the template's lines, the prolog
// (with its header and procset) and the script (with its setup section, layers, page
// trailer and document trailer). The analysis builds the tree once and hands back every
// object that a table may change; the tree prints the default output.
#pragma once

#include <memory>
#include <memory_resource>

#include "document/replaceables.h"
#include "document/sections.h"
#include "support/huge_pages.h"
#include "template/template.h"

class Output;
class POINT_TEXT_READER;

class AI_DOCUMENT {
 public:
  explicit AI_DOCUMENT(std::unique_ptr<TEMPLATE> text);
  AI_DOCUMENT(const AI_DOCUMENT&) = delete;
  AI_DOCUMENT& operator=(const AI_DOCUMENT&) = delete;
  ~AI_DOCUMENT();

  // Builds the section tree: prolog, then script with its setup, layers and trailers. Point
  // texts are read through reader. Returns the replaceable objects in document order, layer
  // by layer, each layer's texts before its placed art.
  REPLACEABLES analyze_doc(POINT_TEXT_READER& reader);
  // Writes everything but the closing "%%EOF" line.
  void print_new(Output& out) const;

  const TEMPLATE& text() const { return *tpl; }
  TEMPLATE& text() { return *tpl; }
  const AI_SCRIPT* get_script() const { return script.get(); }
  const AI_PROLOG* get_prolog() const { return prolog.get(); }

 private:
  std::unique_ptr<TEMPLATE> tpl;
  // Where the models of the point texts live, declared before the tree that holds them: a
  // few large blocks rather than hundreds of thousands of small ones, the first as large as
  // the template, given back when the document goes.
  HUGE_PAGE_BLOCKS model_blocks;
  std::pmr::monotonic_buffer_resource models;
  std::unique_ptr<AI_PROLOG> prolog;
  std::unique_ptr<AI_SCRIPT> script;
};
