// ormel_art_bench: a batch of shelf labels (-keep -each=1), each with an EAN-13 drawn from its
// cell (-barcode=) and a product photo of 1 MB (a JPEG, the same for every label), against
// the same batch whose frames take EPS files instead (a logo of the photo's byte size and a
// small EPS in the barcode's frame); and the photo batch's peak memory for 100 and for 1,000
// documents. Every input is generated; the JPEG is written by libjpeg.
//
//   ormel_art_bench path/to/ormel [--runs N] [--documents N] [--dir DIR]
//
// Its files go to a new folder in --dir (default $TMPDIR or /tmp), removed at the end.
// libjpeg's header needs the standard types first.
#include <cstddef>
#include <cstdio>
#include <cstdlib>
// clang-format off
#include <jpeglib.h>
// clang-format on

#include <algorithm>
#include <filesystem>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "runner.h"

namespace fs = std::filesystem;

namespace bench {
namespace {

constexpr size_t kPhotoBytes = 1000000;
// Targets are printed, never enforced: timings depend on the machine.
constexpr double kTimeRatioMax = 2.0;
constexpr double kMemoryRatioMax = 1.2;

BatchOptions parse_options(int argc, char** argv) {
  BatchOptions options;
  parse_batch_options(argc, argv, &options);
  check_batch_limits(options);
  return options;
}

// A JPEG of seeded noise, which compresses little, at 300 dpi, square.
std::string noise_jpeg(int side) {
  jpeg_compress_struct info;
  jpeg_error_mgr errors;
  info.err = jpeg_std_error(&errors);
  jpeg_create_compress(&info);
  unsigned char* buffer = nullptr;
  unsigned long size = 0;
  jpeg_mem_dest(&info, &buffer, &size);
  info.image_width = static_cast<JDIMENSION>(side);
  info.image_height = static_cast<JDIMENSION>(side);
  info.input_components = 3;
  info.in_color_space = JCS_RGB;
  jpeg_set_defaults(&info);
  jpeg_set_quality(&info, 90, TRUE);
  info.density_unit = 1;
  info.X_density = 300;
  info.Y_density = 300;
  jpeg_start_compress(&info, TRUE);
  std::mt19937 random(23);
  std::vector<unsigned char> row(static_cast<size_t>(side) * 3);
  while (info.next_scanline < info.image_height) {
    for (unsigned char& sample : row) sample = static_cast<unsigned char>(random() & 0xFF);
    JSAMPROW rows[1] = {row.data()};
    jpeg_write_scanlines(&info, rows, 1);
  }
  jpeg_finish_compress(&info);
  std::string jpeg(reinterpret_cast<const char*>(buffer), size);
  jpeg_destroy_compress(&info);
  std::free(buffer);
  return jpeg;
}

// An EPS logo padded with comment lines to the given size.
std::string eps_of_size(size_t size) {
  std::string eps =
      "%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 0 0 144 144\n%%HiResBoundingBox: 0 0 144 144\n"
      "%%EndComments\n0 0.5 0 setrgbcolor 0 0 144 144 rectfill\n";
  const std::string tail = "%%EOF\n";
  const std::string pad = "% " + std::string(77, 'x') + "\n";
  while (eps.size() + pad.size() + tail.size() <= size) eps += pad;
  eps += std::string(size - eps.size() - tail.size() - 1, '%') + "\n";
  return eps + tail;
}

// A label: a point text, a photo frame that embeds stand-in art, a linked barcode frame.
std::string label_template() {
  std::string lines[] = {"%!PS-Adobe-3.0",
                         "%%BoundingBox: 0 0 300 200",
                         "%%EndComments",
                         "%%EndProlog",
                         "%%BeginSetup",
                         "%%EndSetup",
                         "%AI5_BeginLayer",
                         "0 To",
                         "1 0 0 1 20 170 0 Tp",
                         "TP",
                         "(LB-1-1) Tx",
                         "TO",
                         "%AI5_BeginPlace",
                         "%%FileType: 0",
                         "[1 0 0 1 20 20] 0 0 100 100",
                         "(Art:PH-1-1.jpg)`",
                         "%%BeginDocument: Art:PH-1-1.jpg",
                         "%!PS-Adobe-3.0 EPSF-3.0",
                         "%%BoundingBox: 0 0 100 100",
                         "%%EndComments",
                         "0 0 100 100 rectfill",
                         "%%EOF",
                         "%%EndDocument",
                         "~",
                         "%AI5_EndPlace",
                         "%AI5_BeginPlace",
                         "%%FileType: 0",
                         "[1 0 0 1 140 20] 0 0 140 100",
                         "(Art:EAN-1-1.eps)`",
                         "~",
                         "%AI5_EndPlace",
                         "%AI5_EndLayer--",
                         "%%PageTrailer",
                         "%%Trailer",
                         "%%EOF"};
  std::string text;
  for (const std::string& line : lines) text += line + "\r";
  return text;
}

class Bench {
 public:
  Bench(const BatchOptions& options, const std::string& dir) : options_(options), dir_(dir) {}

  void prepare() {
    int side = 512;
    std::string jpeg = noise_jpeg(side);
    while (jpeg.size() < kPhotoBytes) jpeg = noise_jpeg(side += 32);
    write_file(dir_ + "/photo.jpg", jpeg);
    write_file(dir_ + "/logo.eps", eps_of_size(jpeg.size()));
    write_file(dir_ + "/bars.eps", eps_of_size(3000));
    write_file(dir_ + "/label.ai", label_template());
    std::printf("photo: %zu bytes (%d x %d pixels); logo.eps: the same size\n", jpeg.size(), side,
                side);
    write_tables(options_.documents, "");
    write_tables(100, "-100");
  }

  // The tables of count labels, every file name ending with suffix: a batch makes as many
  // documents as its longest table has rows, so all of them are cut to the same length.
  void write_tables(int count, const std::string& suffix) {
    std::string names, codes, photos, logos, bars;
    for (int i = 1; i <= count; ++i) {
      char code[32];
      std::snprintf(code, sizeof code, "400638%06d", i);
      names += "Product " + std::to_string(i) + "\n";
      codes += std::string(code) + "\n";
      photos += "photo.jpg\n";
      logos += "logo.eps\n";
      bars += "bars.eps\n";
    }
    write_file(dir_ + "/names" + suffix + ".txt", names);
    write_file(dir_ + "/codes" + suffix + ".txt", codes);
    write_file(dir_ + "/photos" + suffix + ".txt", photos);
    write_file(dir_ + "/logos" + suffix + ".txt", logos);
    write_file(dir_ + "/bars" + suffix + ".txt", bars);
  }

  void run() {
    std::vector<double> art_s, eps_s;
    long art_rss = 0, small_rss = 0, eps_rss = 0;
    for (int run = 0; run < options_.runs; ++run) {
      const ChildRun art = batch(true, "");
      art_s.push_back(art.seconds);
      art_rss = std::max(art_rss, art.max_rss_kib);
      const ChildRun eps = batch(false, "");
      eps_s.push_back(eps.seconds);
      eps_rss = std::max(eps_rss, eps.max_rss_kib);
      small_rss = std::max(small_rss, batch(true, "-100").max_rss_kib);
    }
    const double a = median(art_s), e = median(eps_s), docs = options_.documents;
    std::printf("%d labels, -keep, median of %d runs:\n", options_.documents, options_.runs);
    std::printf("  EAN-13 and JPEG photo   %8.3f s  %7.3f ms/label  peak %.1f MB\n", a,
                a * 1000 / docs, static_cast<double>(art_rss) / 1024.0);
    std::printf("  EPS files of the same size %5.3f s  %7.3f ms/label  peak %.1f MB\n", e,
                e * 1000 / docs, static_cast<double>(eps_rss) / 1024.0);
    std::printf("  photo batch x%.2f of the EPS batch (target <= %.0f: %s)\n", a / e, kTimeRatioMax,
                a / e <= kTimeRatioMax ? "ok" : "MISS");
    const double ratio = static_cast<double>(art_rss) / static_cast<double>(small_rss);
    std::printf(
        "  peak memory %.1f MB for 100 labels, %.1f MB for %d: x%.2f (target <= %.1f: %s)\n",
        static_cast<double>(small_rss) / 1024.0, static_cast<double>(art_rss) / 1024.0,
        options_.documents, ratio, kMemoryRatioMax, ratio <= kMemoryRatioMax ? "ok" : "MISS");
  }

 private:
  // One batch into a fresh folder: with generated art (an EAN-13 from codes.txt, the JPEG),
  // or with EPS files in the same frames.
  ChildRun batch(bool generated, const std::string& tables) {
    const std::string folder = dir_ + "/labels";
    fs::remove_all(folder);
    fs::create_directories(folder);
    std::vector<std::string> argv = {options_.ormel, "-keep", "-home=" + dir_ + "/", "-each=1",
                                     "-out=" + folder + "/label-####.ai"};
    if (generated) argv.push_back("-barcode=EAN:ean13");
    const std::string table = dir_ + "/%s" + tables + ".txt";
    auto named = [&table](const char* name) {
      std::string path = table;
      return path.replace(path.find("%s"), 2, name);
    };
    argv.insert(argv.end(), {dir_ + "/label.ai", "LB=" + named("names"),
                             "EPS-EAN=" + named(generated ? "codes" : "bars"),
                             "EPS-PH=" + named(generated ? "photos" : "logos")});
    ChildRun run = run_child(argv, "/dev/null", dir_ + "/err.txt");
    if (run.wait_status != 0) {
      throw std::runtime_error("the batch failed: " + read_file(dir_ + "/err.txt"));
    }
    return run;
  }

  const BatchOptions& options_;
  std::string dir_;
};

int run(const BatchOptions& options) {
  const std::string dir = make_batch_folder(options, "ormel_art_bench");
  Bench bench(options, dir);
  bench.prepare();
  bench.run();
  fs::remove_all(dir);
  return 0;
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) {
  return bench::bench_main("ormel_art_bench", "", argc, argv, bench::parse_options, bench::run);
}
