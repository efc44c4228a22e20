// The document's section tree over its lines: the prolog (with its header and procset) and
// the script (with its setup section, layers, page trailer and document trailer). Every
// range is a pair of inclusive line indexes; an empty range has last_line < first_line.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

class AI_DOCUMENT;
class AI_LAYER;
class Output;
class TAB_TEXT;

struct LINE_RANGE {
  int first_line = 0;
  int last_line = -1;

  // Writes each line of the range followed by a carriage return.
  void print_lines(const AI_DOCUMENT& doc, Output& out) const;
};

class AI_HEADER : public LINE_RANGE {
 public:
  void setup(const AI_DOCUMENT& doc);
  std::string_view first_line_text;
};

class AI_PROCSET : public LINE_RANGE {
 public:
  void setup(const AI_DOCUMENT& doc);
};

class AI_PROLOG : public LINE_RANGE {
 public:
  void setup(const AI_DOCUMENT& doc);
  void print_new(const AI_DOCUMENT& doc, Output& out) const { print_lines(doc, out); }

  AI_HEADER header;
  AI_PROCSET procset;
};

class AI_SETUP : public LINE_RANGE {
 public:
  void setup(const AI_DOCUMENT& doc, const LINE_RANGE& script);
};

class AI_PAGE_TRAILER : public LINE_RANGE {
 public:
  void setup(const AI_DOCUMENT& doc, const LINE_RANGE& script);
};

class AI_DOC_TRAILER : public LINE_RANGE {
 public:
  void setup(const AI_DOCUMENT& doc, const LINE_RANGE& script);
  void print_new(const AI_DOCUMENT& doc, Output& out) const;

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
  void setup(const AI_DOCUMENT& doc);
  void print_new(const AI_DOCUMENT& doc, Output& out) const;

  void setup_replace_text(const char* id, const TAB_TEXT& table);
  void setup_replace_text(const TAB_TEXT& table);
  void setup_replace_placed_art(const char* id, const TAB_TEXT& table);
  void report_unreplaced() const;
  void restore_analysed();

  int layer_count() const { return static_cast<int>(layers.size()); }
  const AI_LAYER& layer(int index) const { return *layers[static_cast<size_t>(index)]; }

  AI_SETUP setup_section;
  AI_PAGE_TRAILER page_trailer;
  AI_DOC_TRAILER doc_trailer;

 private:
  void setup_layer(const AI_DOCUMENT& doc);
  template <typename Action>
  void each_layer(Action action) const;

  std::vector<std::unique_ptr<AI_LAYER>> layers;
};

// Index of the first line in [from, to] that begins with comment (or equals it, when
// whole_line is set); -1 when there is none. The comment begins with '%'.
int find_comment(const AI_DOCUMENT& doc, int from, int to, const char* comment,
                 bool whole_line = false);
