// ormel_bench: generates synthetic templates and tables, runs the ormel binary on them and
// prints one row per benchmark (time, throughput, peak memory, ratios to cat and sed,
// checksum).
//
//   ormel_bench path/to/ormel [--dir DIR] [--keep] [--seed N] [--runs N] [--only NAME,...]
//                             [--checksums FILE] [--expect FILE]
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "generator.h"
#include "runner.h"

namespace fs = std::filesystem;

namespace bench {
namespace {

constexpr double kMiB = 1024.0 * 1024.0;
constexpr uint64_t kMaxLines = 1048576;
constexpr int kTableRows = 1000;
constexpr int kTableColumns = 4;
constexpr int kEpsFiles = 512;
constexpr int kManyRuns = 60000;

// Targets are printed, never enforced: timings depend on the machine.
constexpr double kVerbatimMaxCatRatio = 2.0;
constexpr double kTextsPerSecondMin = 800000.0;
constexpr double kTextDenseMaxSedRatio = 1.5;
constexpr double kScalingMaxRatio = 1.3;
constexpr double kManyRunsMaxRssMb = 16.0;

const char kUsage[] =
    "usage: ormel_bench path/to/ormel [--dir DIR] [--keep] [--seed N] [--runs N]\n"
    "                   [--only NAME,...] [--checksums FILE] [--expect FILE]\n";

struct Options {
  std::string ormel;
  std::string dir;
  bool keep = false;
  uint64_t seed = 1;
  int runs = 5;
  std::vector<std::string> only;
  std::string checksums_out;
  std::string checksums_expected;
};

std::vector<std::string> split_commas(const std::string& text) {
  std::vector<std::string> parts;
  size_t start = 0;
  for (size_t comma; (comma = text.find(',', start)) != std::string::npos; start = comma + 1) {
    parts.push_back(text.substr(start, comma - start));
  }
  parts.push_back(text.substr(start));
  return parts;
}

Options parse_options(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    std::string arg = argv[i];
    auto value = [&]() -> std::string {
      if (i + 1 >= argc) throw std::invalid_argument(arg + " needs a value");
      return argv[++i];
    };
    if (arg == "--dir") {
      options.dir = value();
    } else if (arg == "--keep") {
      options.keep = true;
    } else if (arg == "--seed") {
      options.seed = std::stoull(value());
    } else if (arg == "--runs") {
      options.runs = std::stoi(value());
      if (options.runs < 1) throw std::invalid_argument("--runs must be at least 1");
    } else if (arg == "--only") {
      options.only = split_commas(value());
    } else if (arg == "--checksums") {
      options.checksums_out = value();
    } else if (arg == "--expect") {
      options.checksums_expected = value();
    } else if (arg.rfind("--", 0) == 0 || !options.ormel.empty()) {
      throw std::invalid_argument("unexpected argument " + arg);
    } else {
      options.ormel = arg;
    }
  }
  if (options.ormel.empty()) throw std::invalid_argument("no ormel binary given");
  // execvp would search PATH for a bare name; the binary is meant to be the one given.
  if (options.ormel.find('/') == std::string::npos) options.ormel = "./" + options.ormel;
  return options;
}

// The scratch folder: a fresh one below $TMPDIR (or /tmp) unless --dir names one. Only what
// the benchmark made there is removed at the end.
class Scratch {
 public:
  Scratch(const std::string& dir, bool keep) : keep_(keep) {
    if (dir.empty()) {
      const char* tmp = std::getenv("TMPDIR");
      std::string pattern =
          std::string(tmp != nullptr && *tmp != '\0' ? tmp : "/tmp") + "/ormel_bench.XXXXXX";
      if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("cannot create " + pattern);
      path_ = pattern;
      made_.push_back(path_);
    } else {
      path_ = fs::absolute(dir).string();
      if (fs::create_directories(path_)) made_.push_back(path_);
    }
  }
  ~Scratch() {
    if (keep_) return;
    std::error_code ignored;
    for (const std::string& entry : made_) fs::remove_all(entry, ignored);
  }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;

  // A path in the folder, remembered for removal.
  std::string file(const std::string& name) {
    std::string full = path_ + "/" + name;
    made_.push_back(full);
    return full;
  }
  const std::string& path() const { return path_; }

 private:
  std::string path_;
  bool keep_;
  std::vector<std::string> made_;
};

uint64_t derive_seed(uint64_t seed, const std::string& what) {
  uint64_t hash = 0xcbf29ce484222325ULL ^ seed;
  for (char c : what) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3ULL;
  return hash;
}

struct Row {
  std::string name;
  Template tmpl;
  Measurement result;
  const char* items_label = nullptr;  // what items/s counts, or null

  double seconds() const { return result.median_seconds; }
  double megabytes() const { return static_cast<double>(tmpl.bytes) / kMiB; }
  double seconds_per_mb() const { return seconds() / megabytes(); }
  double items_per_second() const { return static_cast<double>(tmpl.objects) / seconds(); }
  double cat_seconds() const { return result.cat_median_seconds; }
  double cat_ratio() const { return cat_seconds() > 0 ? seconds() / cat_seconds() : 0; }
  double sed_seconds() const { return result.sed_median_seconds; }
  double sed_ratio() const { return sed_seconds() > 0 ? seconds() / sed_seconds() : 0; }
  double rss_mb() const { return static_cast<double>(result.peak_rss_kib) / 1024.0; }
  double rss_limit_mb() const { return 2 * megabytes() + 64; }
  bool rss_ok() const { return rss_mb() <= rss_limit_mb(); }
};

void print_header() {
  std::printf("%-16s %7s %8s %9s %7s %9s %8s %7s %7s %6s %7s %6s %-14s %s\n", "name", "MB", "lines",
              "median_s", "MB/s", "lines/s", "items/s", "rss_MB", "cat_ms", "x_cat", "sed_ms",
              "x_sed", "rss<=2xT+64MB", "checksum");
}

void print_row(const Row& row) {
  char items[32] = "-";
  if (row.items_label != nullptr)
    std::snprintf(items, sizeof items, "%.0f", row.items_per_second());
  char rss_check[32];
  std::snprintf(rss_check, sizeof rss_check, "%s (%.0f)", row.rss_ok() ? "ok" : "MISS",
                row.rss_limit_mb());
  std::printf("%-16s %7.2f %8" PRIu64
              " %9.4f %7.1f %9.0f %8s %7.1f %7.2f %6.1f %7.2f %6.2f %-14s %016" PRIx64 "\n",
              row.name.c_str(), row.megabytes(), row.tmpl.lines, row.seconds(),
              row.megabytes() / row.seconds(), static_cast<double>(row.tmpl.lines) / row.seconds(),
              items, row.rss_mb(), row.cat_seconds() * 1000, row.cat_ratio(),
              row.sed_seconds() * 1000, row.sed_ratio(), rss_check, row.result.checksum);
  std::fflush(stdout);
}

using Checksums = std::map<std::string, uint64_t>;

// The file holds "seed N" and then "name checksum" lines.
std::pair<uint64_t, Checksums> read_checksums(const std::string& path) {
  std::ifstream in(path);
  if (!in) throw std::runtime_error("cannot read " + path);
  std::string key;
  uint64_t seed = 0;
  if (!(in >> key >> seed) || key != "seed") throw std::runtime_error(path + ": no seed line");
  Checksums sums;
  std::string name, hex;
  while (in >> name >> hex) sums[name] = std::stoull(hex, nullptr, 16);
  return {seed, sums};
}

void write_checksums(const std::string& path, uint64_t seed, const std::vector<Row>& rows) {
  std::ofstream out(path);
  out << "seed " << seed << "\n";
  char hex[17];
  for (const Row& row : rows) {
    std::snprintf(hex, sizeof hex, "%016" PRIx64, row.result.checksum);
    out << row.name << " " << hex << "\n";
  }
  if (!out.flush()) throw std::runtime_error("cannot write " + path);
}

class Suite {
 public:
  Suite(const Options& options, Scratch& scratch)
      : options_(options),
        scratch_(scratch),
        out_(scratch.file("out.ai")),
        err_(scratch.file("err.txt")) {}

  void run() {
    print_header();
    run_verbatim();
    run_text_dense();
    run_placed_dense();
    run_many_layers();
    run_many_runs();
    run_scaling();
  }
  const std::vector<Row>& rows() const { return rows_; }
  const std::optional<OutputMedians>& verbatim_to_pipe() const { return verbatim_to_pipe_; }
  const std::optional<OutputMedians>& verbatim_to_file() const { return verbatim_to_file_; }
  const Row* find(const std::string& name) const {
    for (const Row& row : rows_) {
      if (row.name == name) return &row;
    }
    return nullptr;
  }

 private:
  bool selected(const std::string& name) const {
    if (options_.only.empty()) return true;
    for (const std::string& prefix : options_.only) {
      if (name.rfind(prefix, 0) == 0) return true;
    }
    return false;
  }
  uint64_t seed(const std::string& what) const { return derive_seed(options_.seed, what); }

  const std::string& table() {
    if (table_.empty()) {
      table_ = scratch_.file("table.txt");
      write_text_table(table_, seed("table"), kTableRows, kTableColumns);
    }
    return table_;
  }

  const Template& text_dense(const std::string& file, int texts,
                             const std::vector<std::string>& ids) {
    auto found = templates_.find(file);
    if (found != templates_.end()) return found->second;
    TextDenseShape shape;
    shape.texts = texts;
    shape.ids = ids;
    // One seed for every size, so the smaller templates are made like the full one.
    return templates_[file] = write_text_dense(scratch_.file(file), seed("text-dense"), shape);
  }

  // `ids` are the identifiers of the template's placeholders: every one must be replaced,
  // or items/s would count work that was not done.
  void run_row(const std::string& name, const Template& tmpl, std::vector<std::string> args,
               const char* items_label, const std::vector<std::string>& ids) {
    Row row{name, tmpl, {}, items_label};
    args.insert(args.begin(), options_.ormel);
    row.result = measure_ormel(args, tmpl.path, out_, err_, options_.runs);
    require_replaced(name, ids);
    print_row(row);
    rows_.push_back(row);
  }

  void require_replaced(const std::string& name, const std::vector<std::string>& ids) const {
    if (ids.empty()) return;
    std::ifstream in(out_, std::ios::binary);
    std::string output((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    for (const std::string& id : ids) {
      if (output.find(id + "-") != std::string::npos) {
        throw std::runtime_error(name + ": a placeholder " + id + "-... is left in the output");
      }
    }
  }

  void run_verbatim() {
    if (!selected("verbatim")) return;
    Template tmpl = write_verbatim(scratch_.file("verbatim.ai"), seed("verbatim"), kMaxLines, 8);
    run_row("verbatim", tmpl, {tmpl.path, table()}, nullptr, {});
    // Every line of this template lies in a printed section, so the output is the input.
    std::string tail;
    if (fnv1a_file(tmpl.path, 0, &tail) != rows_.back().result.checksum) {
      throw std::runtime_error("verbatim: the output is not the template byte for byte");
    }
    // Where the output really goes, both copy it once more.
    const std::vector<std::string> argv = {options_.ormel, tmpl.path, table()};
    verbatim_to_pipe_ = measure_output(argv, tmpl.path, kPipeOutput, err_, options_.runs);
    verbatim_to_file_ = measure_output(argv, tmpl.path, out_, err_, options_.runs);
  }

  void run_text_dense() {
    if (selected("text-dense")) {
      const Template& tmpl = text_dense("text-dense.ai", 100000, {"TX"});
      run_row("text-dense", tmpl, {tmpl.path, "TX=" + table()}, "texts", {"TX"});
    }
    if (selected("text-dense-4ids")) {
      const Template& tmpl = text_dense("text-dense-4ids.ai", 100000, {"TX", "TY", "TZ", "TW"});
      std::vector<std::string> args = {tmpl.path};
      for (const char* id : {"TX", "TY", "TZ", "TW"}) {
        std::string path = scratch_.file(std::string("table-") + id + ".txt");
        write_text_table(path, seed(std::string("table-") + id), kTableRows, kTableColumns);
        args.push_back(std::string(id) + "=" + path);
      }
      run_row("text-dense-4ids", tmpl, args, "texts", {"TX", "TY", "TZ", "TW"});
    }
  }

  void run_placed_dense() {
    if (!selected("placed-dense")) return;
    std::string home = scratch_.file("eps-home");
    write_eps_home(home, seed("eps-home"), kEpsFiles);
    std::string placed = scratch_.file("placed.txt");
    write_placed_table(placed, seed("placed-table"), 1024, 4, kEpsFiles);
    Template tmpl = write_placed_dense(scratch_.file("placed-dense.ai"), seed("placed-dense"), 4,
                                       1024, 1024, 4);
    run_row("placed-dense", tmpl, {"-home=" + home + "/", tmpl.path, "EPS-PH=" + placed}, "blocks",
            {"PH"});
  }

  void run_many_layers() {
    if (!selected("many-layers")) return;
    Template tmpl = write_many_layers(scratch_.file("many-layers.ai"), seed("many-layers"), 1024,
                                      kTableRows, kTableColumns);
    run_row("many-layers", tmpl, {tmpl.path, "TX=" + table()}, "texts", {"TX"});
  }

  void run_many_runs() {
    if (!selected("many-runs")) return;
    Template tmpl = write_many_runs(scratch_.file("many-runs.ai"), kManyRuns);
    run_row("many-runs", tmpl, {tmpl.path, "TX=" + table()}, nullptr, {"TX"});
  }

  void run_scaling() {
    static const struct {
      const char* name;
      const char* file;
      int texts;
    } kSizes[] = {{"scale-1/16", "scale-16.ai", 100000 / 16},
                  {"scale-1/4", "scale-4.ai", 100000 / 4},
                  {"scale-1/1", "text-dense.ai", 100000}};
    for (const auto& size : kSizes) {
      if (!selected(size.name)) continue;
      const Template& tmpl = text_dense(size.file, size.texts, {"TX"});
      run_row(size.name, tmpl, {tmpl.path, "TX=" + table()}, "texts", {"TX"});
    }
  }

  const Options& options_;
  Scratch& scratch_;
  std::string out_;  // ormel's stdout and stderr, overwritten by every run
  std::string err_;
  std::string table_;
  std::map<std::string, Template> templates_;
  std::vector<Row> rows_;
  std::optional<OutputMedians> verbatim_to_pipe_;
  std::optional<OutputMedians> verbatim_to_file_;
};

const char* verdict(bool ok) {
  return ok ? "ok" : "MISS";
}

void print_scaling(const Suite& suite) {
  const Row* small = suite.find("scale-1/16");
  const Row* full = suite.find("scale-1/1");
  if (small == nullptr && full == nullptr && suite.find("scale-1/4") == nullptr) return;
  std::printf("\nscaling (text-dense), seconds per MB:");
  for (const char* name : {"scale-1/16", "scale-1/4", "scale-1/1"}) {
    if (const Row* row = suite.find(name))
      std::printf("  %s %.4f", name + 6, row->seconds_per_mb());
  }
  if (small != nullptr && full != nullptr) {
    double ratio = full->seconds_per_mb() / small->seconds_per_mb();
    std::printf("\n  full / (1/16) = %.2f  (target <= %.1f: %s)", ratio, kScalingMaxRatio,
                verdict(ratio <= kScalingMaxRatio));
  }
  std::printf("\n");
}

void print_targets(const Suite& suite) {
  std::printf("\ntargets:\n");
  const std::pair<const char*, const std::optional<OutputMedians>&> outputs[] = {
      {"to a pipe", suite.verbatim_to_pipe()}, {"to a file", suite.verbatim_to_file()}};
  for (const auto& [where, medians] : outputs) {
    if (!medians) continue;
    std::printf("  verbatim x cat %-9s%10.2f  (<= %.0f)       %s  (%.1f against %.1f ms)\n", where,
                medians->cat_ratio(), kVerbatimMaxCatRatio,
                verdict(medians->cat_ratio() <= kVerbatimMaxCatRatio), medians->seconds * 1000,
                medians->cat_seconds * 1000);
  }
  if (const Row* row = suite.find("verbatim")) {
    std::printf("  verbatim x cat /dev/null%10.2f\n", row->cat_ratio());
  }
  if (const Row* row = suite.find("text-dense")) {
    std::printf("  text-dense      texts/s %10.0f  (>= %.0f)  %s\n", row->items_per_second(),
                kTextsPerSecondMin, verdict(row->items_per_second() >= kTextsPerSecondMin));
    std::printf("  text-dense      x sed   %10.2f  (<= %.1f)     %s\n", row->sed_ratio(),
                kTextDenseMaxSedRatio, verdict(row->sed_ratio() <= kTextDenseMaxSedRatio));
  }
  // Four tables make four passes over the texts: shown beside the targets, not held to them.
  if (const Row* row = suite.find("text-dense-4ids")) {
    std::printf("  text-dense-4ids texts/s %10.0f, x sed %.2f\n", row->items_per_second(),
                row->sed_ratio());
  }
  if (const Row* row = suite.find("many-runs")) {
    std::printf("  many-runs       peak RSS %6.1f MB  (< %.0f MB)  %s\n", row->rss_mb(),
                kManyRunsMaxRssMb, verdict(row->rss_mb() < kManyRunsMaxRssMb));
  }
  bool rss_ok = true;
  for (const Row& row : suite.rows()) {
    if (!row.rss_ok()) {
      std::printf("  %-15s peak RSS %.1f MB over %.1f MB  MISS\n", row.name.c_str(), row.rss_mb(),
                  row.rss_limit_mb());
      rss_ok = false;
    }
  }
  if (rss_ok) std::printf("  peak RSS <= 2 x template + 64 MB in every row  ok\n");
}

// Returns the number of rows whose checksum is not the recorded one.
int compare_checksums(const std::vector<Row>& rows, const Checksums& expected) {
  int failures = 0;
  for (const Row& row : rows) {
    auto found = expected.find(row.name);
    if (found == expected.end()) {
      std::fprintf(stderr, "ormel_bench: %s: no recorded checksum\n", row.name.c_str());
      ++failures;
    } else if (found->second != row.result.checksum) {
      std::fprintf(stderr, "ormel_bench: %s: checksum %016" PRIx64 ", recorded %016" PRIx64 "\n",
                   row.name.c_str(), row.result.checksum, found->second);
      ++failures;
    }
  }
  return failures;
}

int run(const Options& options) {
  std::optional<Checksums> expected;
  if (!options.checksums_expected.empty()) {
    auto [seed, sums] = read_checksums(options.checksums_expected);
    if (seed != options.seed) {
      throw std::runtime_error(options.checksums_expected + " was recorded with --seed " +
                               std::to_string(seed));
    }
    expected = sums;
  }
  Scratch scratch(options.dir, options.keep);
  std::printf("ormel_bench: %s, seed %" PRIu64 ", median of %d runs, files in %s%s\n",
              options.ormel.c_str(), options.seed, options.runs, scratch.path().c_str(),
              options.keep ? " (kept)" : "");
  Suite suite(options, scratch);
  suite.run();
  print_scaling(suite);
  print_targets(suite);
  if (!options.checksums_out.empty()) {
    write_checksums(options.checksums_out, options.seed, suite.rows());
  }
  if (expected && compare_checksums(suite.rows(), *expected) > 0) {
    std::fprintf(stderr, "ormel_bench: output differs from %s\n",
                 options.checksums_expected.c_str());
    return 1;
  }
  if (expected) std::printf("\nchecksums match %s\n", options.checksums_expected.c_str());
  return 0;
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) {
  return bench::bench_main("ormel_bench", bench::kUsage, argc, argv, bench::parse_options,
                           bench::run);
}
