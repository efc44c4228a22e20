// The document's section tree over its lines: the prolog (with its header and procset) and
// the script (with its setup section, layers, page trailer and document trailer). Every
// range is a pair of inclusive line indexes; an empty range has last_line < first_line.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

class AI_LAYER;
class Output;
class POINT_TEXT_READER;
class TEMPLATE;

struct LINE_RANGE {
  int first_line = 0;
  int last_line = -1;

  // Writes each line of the range followed by a carriage return.
  void print_lines(const TEMPLATE& tpl, Output& out) const;
};

class AI_HEADER : public LINE_RANGE {
 public:
  void setup(const TEMPLATE& tpl);
  std::string_view first_line_text;
};

class AI_PROCSET : public LINE_RANGE {
 public:
  void setup(const TEMPLATE& tpl);
};

class AI_PROLOG : public LINE_RANGE {
 public:
  void setup(const TEMPLATE& tpl);
  void print_new(const TEMPLATE& tpl, Output& out) const { print_lines(tpl, out); }

  AI_HEADER header;
  AI_PROCSET procset;
};

class AI_SETUP : public LINE_RANGE {
 public:
  void setup(const TEMPLATE& tpl, const LINE_RANGE& script);
};

class AI_PAGE_TRAILER : public LINE_RANGE {
 public:
  void setup(const TEMPLATE& tpl, const LINE_RANGE& script);
};

class AI_DOC_TRAILER : public LINE_RANGE {
 public:
  void setup(const TEMPLATE& tpl, const LINE_RANGE& script);
  void print_new(const TEMPLATE& tpl, Output& out) const;

 private:
  // Set when no line of the script begins with "%%EOF": the last line then holds the
  // document's last "%%EOF" after lone line feeds, and is written only up to it.
  bool ends_inside_last_line = false;
};

class AI_SCRIPT : public LINE_RANGE {
 public:
  static constexpr int kMaxLayers = 1024;

  AI_SCRIPT();
  ~AI_SCRIPT();
  void setup(const TEMPLATE& tpl, POINT_TEXT_READER& reader);
  void print_new(const TEMPLATE& tpl, Output& out) const;

  int layer_count() const { return static_cast<int>(layers.size()); }
  const AI_LAYER& layer(int index) const { return *layers[static_cast<size_t>(index)]; }
  AI_LAYER& layer(int index) { return *layers[static_cast<size_t>(index)]; }

  AI_SETUP setup_section;
  AI_PAGE_TRAILER page_trailer;
  AI_DOC_TRAILER doc_trailer;

 private:
  void setup_layer(const TEMPLATE& tpl, POINT_TEXT_READER& reader);

  std::vector<std::unique_ptr<AI_LAYER>> layers;
};
