// ormel_batch_bench: one batch of label documents (-each=1) against the same documents made
// by one run each in a shell loop and against writing the same bytes to the same files, and
// the batch's peak memory for 100 and for 1,000 documents. The template is a real
// Illustrator file of the shared corpus with a point text added; without the corpus the
// benchmark says so and ends with status 0.
//
//   ormel_batch_bench path/to/ormel [--corpus DIR] [--runs N] [--documents N] [--dir DIR]
//
// Its files go to a new folder in --dir (default $TMPDIR or /tmp), removed at the end: the
// file system there is what the timings measure.
#include <fcntl.h>
#include <unistd.h>
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "runner.h"

namespace fs = std::filesystem;

namespace bench {
namespace {

const char kTemplateName[] = "php-logo_ai8.ai";
// The label's point text goes into the template's one layer, before its end.
const char kLayerEnd[] = "LB\r\n%AI5_EndLayer--";
const char kLabelText[] =
    "0 To\r\n1 0 0 1 130 -440 0 Tp\r\nTP\r\n0 Tr\r\n0 g\r\n/_Helvetica 18 21.6 0 Tf\r\n"
    "(LB-1-1 \\(LB-1-2\\)) Tx\r\nTO\r\n";

// Targets are printed, never enforced: timings depend on the machine.
constexpr double kLoopRatioMin = 10.0;
constexpr double kWriteRatioMax = 2.0;
constexpr double kMemoryRatioMax = 1.2;

struct Options : BatchOptions {
  std::string corpus = ORMEL_SHARED_CORPUS;
};

Options parse_options(int argc, char** argv) {
  Options options;
  parse_batch_options(argc, argv, &options, [&](const std::string& name, const OptionValue& value) {
    if (name != "--corpus") return false;
    options.corpus = value();
    return true;
  });
  check_batch_limits(options);
  return options;
}

std::string numbered(const std::string& folder, int number) {
  char name[32];
  std::snprintf(name, sizeof name, "/label-%04d.ai", number);
  return folder + name;
}

// A fresh, empty folder: every way of making the files starts from the same state.
void empty_folder(const std::string& folder) {
  fs::remove_all(folder);
  fs::create_directories(folder);
}

class Bench {
 public:
  Bench(const Options& options, const std::string& dir) : options_(options), dir_(dir) {}

  void prepare(const std::string& corpus_file) {
    std::string bytes = read_file(corpus_file);
    const size_t at = bytes.rfind(kLayerEnd);
    if (at == std::string::npos) throw std::runtime_error(corpus_file + ": no layer end");
    bytes.insert(at, kLabelText);
    template_ = dir_ + "/label.ai";
    write_file(template_, bytes);
    std::printf("template: %s with a point text added, %zu bytes\n", kTemplateName, bytes.size());
    fs::create_directories(dir_ + "/rows");
    std::string table;
    std::string small;
    for (int i = 1; i <= options_.documents; ++i) {
      const std::string row =
          "Product " + std::to_string(i) + "\t" + std::to_string(990 + i) + "\n";
      table += row;
      if (i <= 100) small += row;
      write_file(row_file(i), row);
    }
    write_file(dir_ + "/table.txt", table);
    write_file(dir_ + "/table-100.txt", small);
  }

  void run_mode(const char* mode) {
    const bool keep = std::string(mode) == "-keep";
    std::printf("\n%s mode, %d documents, median of %d runs:\n", keep ? "-keep" : "default",
                options_.documents, options_.runs);
    const std::string batch = dir_ + "/batch";
    const std::string loop = dir_ + "/loop";
    std::vector<double> batch_s, loop_s, write_s;
    long batch_rss = 0, small_rss = 0;
    for (int run = 0; run < options_.runs; ++run) {
      empty_folder(batch);
      ChildRun made = run_batch(keep, batch, "table.txt");
      batch_s.push_back(made.seconds);
      batch_rss = std::max(batch_rss, made.max_rss_kib);
      empty_folder(loop);
      loop_s.push_back(run_loop(keep, loop));
      write_s.push_back(write_same_bytes(batch));
      empty_folder(dir_ + "/small");
      small_rss =
          std::max(small_rss, run_batch(keep, dir_ + "/small", "table-100.txt").max_rss_kib);
    }
    compare_outputs(batch, loop);
    const double b = median(batch_s), l = median(loop_s), w = median(write_s);
    const double docs = options_.documents;
    std::printf("  batch                 %8.3f s  %7.3f ms/document\n", b, b * 1000 / docs);
    std::printf(
        "  single runs, loop     %8.3f s  %7.3f ms/document  x%.1f the batch (target >= %.0f: "
        "%s)\n",
        l, l * 1000 / docs, l / b, kLoopRatioMin, l / b >= kLoopRatioMin ? "ok" : "MISS");
    std::printf(
        "  write the same bytes  %8.3f s  %7.3f ms/document  batch x%.2f of it (target <= %.0f: "
        "%s)\n",
        w, w * 1000 / docs, b / w, kWriteRatioMax, b / w <= kWriteRatioMax ? "ok" : "MISS");
    const double ratio = static_cast<double>(batch_rss) / static_cast<double>(small_rss);
    std::printf(
        "  peak memory           %.1f MB for 100 documents, %.1f MB for %d: x%.2f (target <= %.1f: "
        "%s)\n",
        static_cast<double>(small_rss) / 1024.0, static_cast<double>(batch_rss) / 1024.0,
        options_.documents, ratio, kMemoryRatioMax, ratio <= kMemoryRatioMax ? "ok" : "MISS");
    std::printf("  every document equals its single run's output\n");
  }

 private:
  ChildRun run_batch(bool keep, const std::string& folder, const std::string& table) {
    std::vector<std::string> argv = {options_.ormel};
    if (keep) argv.push_back("-keep");
    argv.insert(argv.end(), {"-each=1", "-out=" + folder + "/label-####.ai", template_,
                             "LB=" + dir_ + "/" + table});
    ChildRun run = run_child(argv, "/dev/null", dir_ + "/err.txt");
    if (run.wait_status != 0) {
      throw std::runtime_error("the batch failed: " + read_file(dir_ + "/err.txt"));
    }
    return run;
  }

  // The shell loop a user would write: one run per document, each from its own one-row table.
  double run_loop(bool keep, const std::string& folder) {
    const std::string script = "i=1; while [ $i -le " + std::to_string(options_.documents) +
                               " ]; do n=$(printf %04d $i); \"$0\" " + (keep ? "-keep " : "") +
                               "\"$1\" LB=\"$2\"/rows/$n.txt > \"$3\"/label-$n.ai || "
                               "exit 1; i=$((i + 1)); done";
    ChildRun run = run_child({"sh", "-c", script, options_.ormel, template_, dir_, folder},
                             "/dev/null", dir_ + "/err.txt");
    if (run.wait_status != 0)
      throw std::runtime_error("the loop failed: " + read_file(dir_ + "/err.txt"));
    return run.seconds;
  }

  // The bytes of every document, read first, then written to the same files as plainly as
  // possible: open, one write, close.
  double write_same_bytes(const std::string& folder) {
    std::vector<std::string> documents;
    for (int i = 1; i <= options_.documents; ++i)
      documents.push_back(read_file(numbered(folder, i)));
    empty_folder(folder);
    const double start = now();
    for (int i = 1; i <= options_.documents; ++i) {
      const std::string path = numbered(folder, i);
      const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
      const std::string& bytes = documents[static_cast<size_t>(i - 1)];
      if (fd < 0 || ::write(fd, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size()) ||
          ::close(fd) != 0) {
        throw std::runtime_error("cannot write " + path);
      }
    }
    return now() - start;
  }

  void compare_outputs(const std::string& batch, const std::string& loop) const {
    for (int i = 1; i <= options_.documents; ++i) {
      if (read_file(numbered(batch, i)) != read_file(numbered(loop, i))) {
        throw std::runtime_error(numbered(batch, i) + " differs from its single run's output");
      }
    }
  }

  std::string row_file(int number) const {
    char name[32];
    std::snprintf(name, sizeof name, "/rows/%04d.txt", number);
    return dir_ + name;
  }

  static double now() {
    timespec ts;
    clock_gettime(CLOCK_MONOTONIC, &ts);
    return static_cast<double>(ts.tv_sec) + static_cast<double>(ts.tv_nsec) * 1e-9;
  }

  const Options& options_;
  std::string dir_;
  std::string template_;
};

int run(const Options& options) {
  const std::string corpus_file = options.corpus + "/" + kTemplateName;
  if (!fs::exists(corpus_file)) {
    std::printf(
        "ormel_batch_bench: %s not found: the batch benchmark needs the shared corpus "
        "(--corpus DIR); skipped\n",
        corpus_file.c_str());
    return 0;
  }
  const std::string dir = make_batch_folder(options, "ormel_batch_bench");
  Bench bench(options, dir);
  bench.prepare(corpus_file);
  bench.run_mode("");
  bench.run_mode("-keep");
  fs::remove_all(dir);
  return 0;
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) {
  return bench::bench_main("ormel_batch_bench", "", argc, argv, bench::parse_options, bench::run);
}
