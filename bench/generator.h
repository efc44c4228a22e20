// Deterministic synthetic inputs for the benchmarks: templates, text tables, placed-art
// tables and the EPS files they name. The same seed always gives the same bytes, so the
// checksums of ormel's output can be compared between builds.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

// splitmix64: tiny, fast, and identical on every platform (unlike std::uniform_*).
class Rng {
 public:
  explicit Rng(uint64_t seed) : state_(seed) {}
  uint64_t next();
  // A value in [0, bound); bound must be positive.
  int below(int bound);
  // A value in [low, high].
  int between(int low, int high) { return low + below(high - low + 1); }
  bool chance(int percent) { return below(100) < percent; }

 private:
  uint64_t state_;
};

// Writes a template line by line, each ended by a carriage return, and counts what it wrote.
class TemplateWriter {
 public:
  explicit TemplateWriter(const std::string& path);
  ~TemplateWriter();
  TemplateWriter(const TemplateWriter&) = delete;
  TemplateWriter& operator=(const TemplateWriter&) = delete;

  void line(std::string_view text);
  void begin_document();  // header, prolog and setup section
  void begin_layer(int number);
  void end_layer();
  void end_document();  // trailers and the "%%EOF" line; closes the file

  uint64_t lines() const { return lines_; }
  uint64_t bytes() const { return bytes_; }
  // Lines written by end_document() and by one begin_layer()/end_layer() pair.
  static constexpr uint64_t kTrailerLines = 5;
  static constexpr uint64_t kLayerFrameLines = 5;

 private:
  std::FILE* file_;
  std::string path_;
  std::vector<char> buffer_;
  uint64_t lines_ = 0;
  uint64_t bytes_ = 0;
};

struct Template {
  std::string path;
  uint64_t bytes = 0;
  uint64_t lines = 0;
  uint64_t objects = 0;  // replaceable point texts or placed-art blocks it holds
};

// Exactly `total_lines` lines (counting "%!PS-Adobe" through "%%EOF") in `layers` layers,
// no placeholder: drawing, raster-like data and text blocks that are printed as read.
Template write_verbatim(const std::string& path, uint64_t seed, uint64_t total_lines, int layers);

// `texts` point texts, one placeholder each, `texts_per_layer` to a layer. Identifiers cycle
// through `ids`; rows run 1..rows, columns 1..columns. About one in eight placeholders is
// split over two runs with a font change between them.
struct TextDenseShape {
  int texts = 100000;
  int texts_per_layer = 5000;
  int rows = 1000;
  int columns = 4;
  std::vector<std::string> ids = {"TX"};
};
Template write_text_dense(const std::string& path, uint64_t seed, const TextDenseShape& shape);

// `layers` layers of a few lines and one point text each (placeholder "TX-r-c").
Template write_many_layers(const std::string& path, uint64_t seed, int layers, int rows,
                           int columns);

// One point text of `runs` runs on one line: every run but the last is a "Tx" without a
// string operand, the last one holds the placeholder "TX-1-1".
Template write_many_runs(const std::string& path, int runs);

// `blocks_per_layer` placed-art blocks in each of `layers` layers, linked files named
// "Disk:Art:PH-r-c.eps" with r in 1..rows and c in 1..columns.
Template write_placed_dense(const std::string& path, uint64_t seed, int layers,
                            int blocks_per_layer, int rows, int columns);

// A tab-delimited table of short product-like cells, free of anything a placeholder pattern
// could match.
void write_text_table(const std::string& path, uint64_t seed, int rows, int columns);

// `files` small EPS files below home/Art/ (some in Art/Logos/), each with a
// "%%HiResBoundingBox: 0 0 W H" line, and a table whose cells name them as colon paths.
void write_eps_home(const std::string& home, uint64_t seed, int files);
void write_placed_table(const std::string& path, uint64_t seed, int rows, int columns, int files);

}  // namespace bench
