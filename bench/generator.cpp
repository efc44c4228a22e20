#include "generator.h"

#include <algorithm>
#include <cstdarg>
#include <filesystem>
#include <stdexcept>

#include "runner.h"

namespace bench {
namespace {

constexpr size_t kWriteBuffer = 1 << 20;

std::string format(const char* fmt, ...) __attribute__((format(printf, 1, 2)));
std::string format(const char* fmt, ...) {
  char text[512];
  va_list args;
  va_start(args, fmt);
  int length = std::vsnprintf(text, sizeof text, fmt, args);
  va_end(args);
  if (length < 0 || static_cast<size_t>(length) >= sizeof text) {
    throw std::runtime_error("generator: formatted line too long");
  }
  return std::string(text, static_cast<size_t>(length));
}

// A decimal built from integers, so the text never depends on floating-point formatting.
std::string decimal(Rng& rng, int low, int high, int digits) {
  int whole = rng.between(low, high);
  if (digits == 0) return std::to_string(whole);
  int scale = 1;
  for (int i = 0; i < digits; ++i) scale *= 10;
  return format("%d.%0*d", whole, digits, rng.below(scale));
}

// Mostly four decimals, as drawing programs write them; now and then fewer.
std::string coord(Rng& rng) {
  return decimal(rng, 0, 792, rng.chance(80) ? 4 : rng.between(0, 3));
}

std::string point(Rng& rng) {
  return coord(rng) + " " + coord(rng);
}

const char* const kWords[] = {
    "organic", "apples",  "fresh",  "bread",   "whole",    "grain", "coffee", "beans",
    "roasted", "premium", "blue",   "cotton",  "shirt",    "large", "small",  "pack",
    "of",      "six",     "Sale",   "Special", "Offer",    "new",   "green",  "tea",
    "Leaf",    "natural", "Winter", "Edition", "recycled", "paper", "box",    "set"};
constexpr int kWordCount = sizeof kWords / sizeof kWords[0];

// Words only: no capital letters followed by a dash, so no placeholder can appear.
std::string phrase(Rng& rng, int min_words, int max_words) {
  std::string text;
  int count = rng.between(min_words, max_words);
  for (int i = 0; i < count; ++i) {
    if (i > 0) text += ' ';
    text += kWords[rng.below(kWordCount)];
  }
  return text;
}

const char* const kFonts[] = {"/_Helvetica", "/_Helvetica-Bold", "/_Times-Roman", "/_Futura-Book",
                              "/_Minion-Regular"};

std::string font_line(Rng& rng) {
  int size = rng.between(6, 36);
  return format("%s %d %d.%d 0 Tf", kFonts[rng.below(5)], size, size * 12 / 10, size % 10);
}

// A colour component: 0, 1 or one decimal between.
std::string tint(Rng& rng) {
  int tenths = rng.below(11);
  if (tenths == 0 || tenths == 10) return std::to_string(tenths / 10);
  return format("0.%d", tenths);
}

std::string fill_line(Rng& rng) {
  if (rng.chance(50)) return tint(rng) + " g";
  return tint(rng) + " " + tint(rng) + " " + tint(rng) + " " + tint(rng) + " k";
}

// One filled or stroked path, 3 to 16 lines, typical of what a drawing program writes.
void path_lines(Rng& rng, std::vector<std::string>& out) {
  out.push_back(fill_line(rng));
  if (rng.chance(40)) out.push_back(format("0 i 0 J 0 j %d w 4 M []0 d", rng.between(1, 4)));
  out.push_back("0 D");
  out.push_back(point(rng) + " m");
  int segments = rng.between(1, 12);
  for (int i = 0; i < segments; ++i) {
    if (rng.chance(60)) {
      out.push_back(point(rng) + " " + point(rng) + " " + point(rng) + " c");
    } else {
      out.push_back(point(rng) + (rng.chance(50) ? " l" : " L"));
    }
  }
  static const char* const kPaint[] = {"f", "F", "s", "S", "b", "B"};
  out.push_back(kPaint[rng.below(6)]);
}

// A small closed shape: 4 to 6 lines.
void short_path_lines(Rng& rng, std::vector<std::string>& out) {
  out.push_back(fill_line(rng));
  out.push_back(point(rng) + " m");
  int segments = rng.between(1, 3);
  for (int i = 0; i < segments; ++i) out.push_back(point(rng) + " l");
  out.push_back("f");
}

// Raster-like image data: long hexadecimal comment lines.
void raster_lines(Rng& rng, std::vector<std::string>& out) {
  static const char kHex[] = "0123456789ABCDEF";
  out.push_back(format("[1 0 0 1 %s] 0 0 64 64 64 64 8 3 0 0 0 0 XI", point(rng).c_str()));
  int rows = rng.between(2, 8);
  for (int r = 0; r < rows; ++r) {
    std::string data = "%";
    int length = rng.between(80, 280);
    for (int i = 0; i < length; ++i) data += kHex[rng.below(16)];
    out.push_back(data);
  }
  out.push_back("XH");
}

// A text block that is printed as read: area (1) or path (2) text, or a point text (0)
// without placeholder.
void plain_text_lines(Rng& rng, std::vector<std::string>& out) {
  static const int kTypes[] = {1, 1, 2, 0};
  out.push_back(format("%d To", kTypes[rng.below(4)]));
  out.push_back("1 0 0 1 " + point(rng) + " 0 Tp");
  out.push_back("TP");
  out.push_back("0 Tr");
  out.push_back(fill_line(rng));
  out.push_back(font_line(rng));
  out.push_back("0 Ap");
  int runs = rng.between(1, 3);
  for (int i = 0; i < runs; ++i) {
    if (i > 0) out.push_back(font_line(rng));
    out.push_back("(" + phrase(rng, 1, 8) + ") Tx");
  }
  out.push_back("TO");
}

void verbatim_group(Rng& rng, std::vector<std::string>& out) {
  int kind = rng.below(100);
  if (kind < 60) {
    path_lines(rng, out);
  } else if (kind < 80) {
    raster_lines(rng, out);
  } else if (kind < 94) {
    plain_text_lines(rng, out);
  } else {
    out.push_back("u");
    path_lines(rng, out);
    path_lines(rng, out);
    out.push_back("U");
  }
}

std::string placeholder(const std::string& id, int row, int column) {
  return id + "-" + std::to_string(row) + "-" + std::to_string(column);
}

// A point text whose strings hold one placeholder, sometimes split over two runs.
void point_text_lines(Rng& rng, const std::string& id, int row, int column,
                      std::vector<std::string>& out) {
  out.push_back("0 To");
  out.push_back("1 0 0 1 " + point(rng) + " 0 Tp");
  out.push_back("TP");
  out.push_back("0 Tr");
  out.push_back(fill_line(rng));
  out.push_back(font_line(rng));
  if (rng.chance(20)) out.push_back(format("%d 100 Tz", rng.between(80, 120)));
  out.push_back("0 Ap");
  std::string before = rng.chance(40) ? phrase(rng, 1, 2) + ": " : "";
  std::string after = rng.chance(30) ? " " + phrase(rng, 1, 2) : "";
  if (rng.chance(12)) {
    out.push_back("(" + before + id + "-) Tx");
    out.push_back(font_line(rng));
    out.push_back("(" + std::to_string(row) + "-" + std::to_string(column) + after + ") Tx");
  } else {
    out.push_back("(" + before + placeholder(id, row, column) + after + ") Tx");
  }
  out.push_back("TO");
}

void write_lines(TemplateWriter& writer, const std::vector<std::string>& lines) {
  for (const std::string& text : lines) writer.line(text);
}

// The EPS file number `index` as a table cell (colon path) and below the home folder.
std::string eps_cell(int index) {
  if (index % 8 == 0) return format("Art:Logos:logo %03d.eps", index);
  return format("Art:img-%03d.eps", index);
}
std::string eps_relative_path(int index) {
  if (index % 8 == 0) return format("Art/Logos/logo %03d.eps", index);
  return format("Art/img-%03d.eps", index);
}

}  // namespace

uint64_t Rng::next() {
  uint64_t z = (state_ += 0x9e3779b97f4a7c15ULL);
  z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9ULL;
  z = (z ^ (z >> 27)) * 0x94d049bb133111ebULL;
  return z ^ (z >> 31);
}

int Rng::below(int bound) {
  return static_cast<int>(next() % static_cast<uint64_t>(bound));
}

TemplateWriter::TemplateWriter(const std::string& path)
    : file_(std::fopen(path.c_str(), "wb")), path_(path), buffer_(kWriteBuffer) {
  if (file_ == nullptr) throw std::runtime_error("cannot create " + path);
  std::setvbuf(file_, buffer_.data(), _IOFBF, buffer_.size());
}

TemplateWriter::~TemplateWriter() {
  if (file_ != nullptr) std::fclose(file_);
}

void TemplateWriter::line(std::string_view text) {
  std::fwrite(text.data(), 1, text.size(), file_);
  std::fputc('\r', file_);
  ++lines_;
  bytes_ += text.size() + 1;
}

void TemplateWriter::begin_document() {
  for (const char* text :
       {"%!PS-Adobe-3.0", "%%Creator: ormel_bench", "%%Title: (synthetic)",
        "%%BoundingBox: 0 0 612 792", "%%EndComments", "%%BeginProcSet: Adobe_Illustrator_AI5 1 0",
        "%%EndProcSet", "%%EndProlog", "%%BeginSetup", "Adobe_Illustrator_AI5 /initialize get exec",
        "%%EndSetup"}) {
    line(text);
  }
}

void TemplateWriter::begin_layer(int number) {
  line("%AI5_BeginLayer");
  line("1 1 1 1 0 0 0 79 128 255 Lb");
  line(format("(Layer %d) Ln", number));
}

void TemplateWriter::end_layer() {
  line("LB");
  line("%AI5_EndLayer--");
}

void TemplateWriter::end_document() {
  line("%%PageTrailer");
  line("gsave annotatepage grestore showpage");
  line("%%Trailer");
  line("Adobe_Illustrator_AI5 /terminate get exec");
  line("%%EOF");
  std::FILE* file = file_;
  file_ = nullptr;
  if (std::ferror(file) != 0 || std::fclose(file) != 0) {
    throw std::runtime_error("cannot write " + path_);
  }
}

Template write_verbatim(const std::string& path, uint64_t seed, uint64_t total_lines, int layers) {
  Rng rng(seed);
  TemplateWriter writer(path);
  writer.begin_document();
  uint64_t frame = writer.lines() + TemplateWriter::kTrailerLines +
                   static_cast<uint64_t>(layers) * TemplateWriter::kLayerFrameLines;
  if (total_lines < frame) throw std::runtime_error("verbatim: too few lines for the frame");
  uint64_t body = total_lines - frame;
  std::vector<std::string> group;
  for (int layer = 0; layer < layers; ++layer) {
    uint64_t budget = body / static_cast<uint64_t>(layers) +
                      (layer == layers - 1 ? body % static_cast<uint64_t>(layers) : 0);
    writer.begin_layer(layer + 1);
    while (budget > 0) {
      group.clear();
      verbatim_group(rng, group);
      // The last lines of a layer are single path points, so the total comes out exact.
      if (group.size() > budget) group.assign(budget, point(rng) + " l");
      write_lines(writer, group);
      budget -= group.size();
    }
    writer.end_layer();
  }
  writer.end_document();
  if (writer.lines() != total_lines) throw std::runtime_error("verbatim: line count is off");
  return {path, writer.bytes(), writer.lines(), 0};
}

Template write_text_dense(const std::string& path, uint64_t seed, const TextDenseShape& shape) {
  Rng rng(seed);
  TemplateWriter writer(path);
  writer.begin_document();
  std::vector<std::string> group;
  int written = 0;
  for (int layer = 1; written < shape.texts; ++layer) {
    writer.begin_layer(layer);
    int in_layer = std::min(shape.texts_per_layer, shape.texts - written);
    for (int i = 0; i < in_layer; ++i, ++written) {
      group.clear();
      // Sparse shapes between the texts keep 100,000 texts under the line limit.
      if (rng.chance(8)) short_path_lines(rng, group);
      const std::string& id = shape.ids[static_cast<size_t>(written) % shape.ids.size()];
      point_text_lines(rng, id, rng.between(1, shape.rows), rng.between(1, shape.columns), group);
      write_lines(writer, group);
    }
    writer.end_layer();
  }
  writer.end_document();
  return {path, writer.bytes(), writer.lines(), static_cast<uint64_t>(shape.texts)};
}

Template write_many_layers(const std::string& path, uint64_t seed, int layers, int rows,
                           int columns) {
  Rng rng(seed);
  TemplateWriter writer(path);
  writer.begin_document();
  std::vector<std::string> group;
  for (int layer = 1; layer <= layers; ++layer) {
    writer.begin_layer(layer);
    group.clear();
    path_lines(rng, group);
    point_text_lines(rng, "TX", (layer - 1) % rows + 1, rng.between(1, columns), group);
    write_lines(writer, group);
    writer.end_layer();
  }
  writer.end_document();
  return {path, writer.bytes(), writer.lines(), static_cast<uint64_t>(layers)};
}

Template write_many_runs(const std::string& path, int runs) {
  TemplateWriter writer(path);
  writer.begin_document();
  writer.begin_layer(1);
  writer.line("0 To");
  std::string line;
  for (int i = 1; i < runs; ++i) line += "Tx ";
  writer.line(line + "(TX-1-1) Tx");
  writer.line("TO");
  writer.end_layer();
  writer.end_document();
  return {path, writer.bytes(), writer.lines(), 1};
}

Template write_placed_dense(const std::string& path, uint64_t seed, int layers,
                            int blocks_per_layer, int rows, int columns) {
  Rng rng(seed);
  TemplateWriter writer(path);
  writer.begin_document();
  std::vector<std::string> group;
  int block = 0;
  for (int layer = 1; layer <= layers; ++layer) {
    writer.begin_layer(layer);
    for (int i = 0; i < blocks_per_layer; ++i, ++block) {
      if (rng.chance(25)) {
        group.clear();
        path_lines(rng, group);
        write_lines(writer, group);
      }
      int row = block / columns % rows + 1;
      int column = block % columns + 1;
      static const char* const kScales[] = {"1", "1", "0.5", "0.75", "1.25", "2"};
      std::string scale = kScales[rng.below(6)];
      std::string placement = "[" + scale + " 0 0 " + scale + " " + point(rng) + "] 0 0 " +
                              decimal(rng, 40, 400, 1) + " " + decimal(rng, 40, 400, 1);
      std::string file = "(Disk:Art:" + placeholder("PH", row, column) + ".eps) `";
      writer.line("%AI5_BeginPlace");
      writer.line("%%FileType: 1");
      if (rng.chance(20)) {
        writer.line(placement);
        writer.line(file);
      } else {
        writer.line(placement + " " + file);
      }
      writer.line("~");
      writer.line("%AI5_EndPlace");
    }
    writer.end_layer();
  }
  writer.end_document();
  return {path, writer.bytes(), writer.lines(), static_cast<uint64_t>(block)};
}

void write_text_table(const std::string& path, uint64_t seed, int rows, int columns) {
  Rng rng(seed);
  std::string text;
  for (int row = 1; row <= rows; ++row) {
    for (int column = 1; column <= columns; ++column) {
      if (column > 1) text += '\t';
      if (column == 2) {
        text += decimal(rng, 0, 999, 2);
      } else {
        text += phrase(rng, 1, 5);
      }
    }
    text += '\n';
  }
  write_file(path, text);
}

void write_eps_home(const std::string& home, uint64_t seed, int files) {
  Rng rng(seed);
  std::vector<std::string> body;
  for (int index = 0; index < files; ++index) {
    std::string path = home + "/" + eps_relative_path(index);
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::string width = decimal(rng, 20, 600, 3);
    std::string height = decimal(rng, 20, 600, 3);
    // Some files end their lines with CR, as Mac tools wrote them, the rest with LF.
    const char* eol = index % 3 == 0 ? "\r" : "\n";
    std::string text = "%!PS-Adobe-3.0 EPSF-3.0" + std::string(eol) + "%%Creator: ormel_bench" +
                       eol + "%%Title: (" + eps_cell(index) + ")" + eol + "%%BoundingBox: 0 0 " +
                       std::to_string(std::stoi(width) + 1) + " " +
                       std::to_string(std::stoi(height) + 1) + eol + "%%HiResBoundingBox: 0 0 " +
                       width + " " + height + eol + "%%EndComments" + eol;
    body.clear();
    path_lines(rng, body);
    for (const std::string& line : body) text += line + eol;
    text += "%%EOF";
    text += eol;
    write_file(path, text);
  }
}

void write_placed_table(const std::string& path, uint64_t seed, int rows, int columns, int files) {
  Rng rng(seed);
  std::string text;
  for (int row = 1; row <= rows; ++row) {
    for (int column = 1; column <= columns; ++column) {
      if (column > 1) text += '\t';
      text += eps_cell(rng.below(files));
    }
    text += '\n';
  }
  write_file(path, text);
}

}  // namespace bench
