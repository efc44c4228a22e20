// ormel_pages_bench: 1,000 shelf labels rendered into one PDF by one run of ormel (one
// Ghostscript process fed every label) against one Ghostscript process per label, the way a
// print shop converts documents one by one, and the peak memory for 100 and for 1,000 labels:
// of the run (ormel or its Ghostscript, the larger) and of ormel alone. The labels are the bundled
// example's (examples/shelf-label.ai, -keep with the logos, barcodes and photos embedded), their
// products taken from the catalogue in turn with a price of their own.
//
//   ormel_pages_bench path/to/ormel [--runs N] [--documents N] [--singles N] [--dir DIR]
//
// The single runs are --singles of the labels (default 50), scaled to --documents. Without
// Ghostscript the benchmark says so and ends with status 0.
#include <sys/wait.h>
#include <unistd.h>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "runner.h"

namespace fs = std::filesystem;

namespace bench {
namespace {

constexpr double kSpeedupMin = 50.0;
constexpr double kMemoryRatioMax = 1.2;

struct Options : BatchOptions {
  std::string examples = ORMEL_EXAMPLES;
  int singles = 50;
};

Options parse_options(int argc, char** argv) {
  Options options;
  parse_batch_options(argc, argv, &options, [&](const std::string& name, const OptionValue& value) {
    if (name != "--singles") return false;
    options.singles = std::stoi(value());
    return true;
  });
  check_batch_limits(options, options.singles >= 1 && options.singles <= options.documents,
                     ", --singles 1 to documents");
  return options;
}

std::vector<std::string> lines_of(const std::string& path) {
  std::ifstream in(path);
  if (!in) throw std::runtime_error("cannot read " + path);
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

// ormel's own peak resident memory, without its Ghostscript's (which wait4 would fold in):
// its VmHWM, read from /proc every few milliseconds until it ends. exec starts the count
// afresh, so nothing of this process is counted.
long own_peak_kib(const std::vector<std::string>& argv) {
  std::vector<char*> args;
  for (const std::string& arg : argv) args.push_back(const_cast<char*>(arg.c_str()));
  args.push_back(nullptr);
  const pid_t pid = fork();
  if (pid < 0) throw std::runtime_error("fork failed");
  if (pid == 0) {
    std::freopen("/dev/null", "w", stderr);
    execv(args[0], args.data());
    _exit(127);
  }
  long peak = 0;
  int status = 0;
  while (waitpid(pid, &status, WNOHANG) == 0) {
    std::ifstream in("/proc/" + std::to_string(pid) + "/status");
    for (std::string line; std::getline(in, line);) {
      if (line.rfind("VmHWM:", 0) == 0) peak = std::max(peak, std::stol(line.substr(6)));
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) throw std::runtime_error("ormel failed");
  return peak;
}

class Bench {
 public:
  Bench(const Options& options, const std::string& dir) : options_(options), dir_(dir) {}

  // Tables of `documents` labels and of 100: the catalogue's products and logos in turn.
  void prepare() {
    const std::vector<std::string> products = lines_of(options_.examples + "/catalogue.txt");
    const std::vector<std::string> logos = lines_of(options_.examples + "/catalogue-logos.txt");
    for (int count : {options_.documents, 100}) {
      std::string table = products[0] + "\n";
      std::string logo_table = logos[0] + "\n";
      for (int i = 0; i < count; ++i) {
        std::istringstream row(products[1 + static_cast<size_t>(i) % (products.size() - 1)]);
        std::string name, origin, price, rest;
        std::getline(row, name, '\t');
        std::getline(row, origin, '\t');
        std::getline(row, price, '\t');
        std::getline(row, rest);  // size, EAN-13 and photo
        table += name + "\t" + origin + "\t" + std::to_string(1000 + 100 * i) + "\t" + rest + "\n";
        logo_table += logos[1 + static_cast<size_t>(i) % (logos.size() - 1)] + "\n";
      }
      write_file(table_path(count), table);
      write_file(logos_path(count), logo_table);
    }
  }

  void run() {
    std::vector<double> batch_s, singles_s;
    long batch_rss = 0, small_rss = 0, own_rss = 0, own_small_rss = 0;
    make_documents();
    for (int run = 0; run < options_.runs; ++run) {
      ChildRun batch = run_ormel(options_.documents, dir_ + "/labels.pdf");
      batch_s.push_back(batch.seconds);
      batch_rss = std::max(batch_rss, batch.max_rss_kib);
      singles_s.push_back(run_singles());
      small_rss = std::max(small_rss, run_ormel(100, dir_ + "/labels-100.pdf").max_rss_kib);
      own_rss = std::max(own_rss, own_peak_kib(args_to(options_.documents, "/own.pdf")));
      own_small_rss = std::max(own_small_rss, own_peak_kib(args_to(100, "/own-100.pdf")));
    }
    const double docs = options_.documents;
    const double b = median(batch_s);
    const double s = median(singles_s) * docs / options_.singles;
    std::printf("%d labels into one PDF, median of %d runs:\n", options_.documents, options_.runs);
    std::printf("  one run of ormel     %8.3f s  %7.3f ms/label  %.1f MB PDF\n", b, b * 1000 / docs,
                static_cast<double>(fs::file_size(dir_ + "/labels.pdf")) / 1048576.0);
    std::printf(
        "  gs per label         %8.3f s  %7.3f ms/label  (%d labels timed, scaled)  x%.1f the run "
        "(target >= %.0f: %s)\n",
        s, s * 1000 / docs, options_.singles, s / b, kSpeedupMin,
        s / b >= kSpeedupMin ? "ok" : "MISS");
    const double ratio = static_cast<double>(batch_rss) / static_cast<double>(small_rss);
    // wait4 reports the larger of ormel and the Ghostscript it waited for.
    std::printf(
        "  peak memory, ormel or its Ghostscript  %.1f MB for 100 labels, %.1f MB for %d: x%.2f "
        "(target <= %.1f: %s)\n",
        static_cast<double>(small_rss) / 1024.0, static_cast<double>(batch_rss) / 1024.0,
        options_.documents, ratio, kMemoryRatioMax, ratio <= kMemoryRatioMax ? "ok" : "MISS");
    const double own = static_cast<double>(own_rss) / static_cast<double>(own_small_rss);
    std::printf(
        "  peak memory, ormel alone              %.1f MB for 100 labels, %.1f MB for %d: x%.2f "
        "(target <= %.1f: %s)\n",
        static_cast<double>(own_small_rss) / 1024.0, static_cast<double>(own_rss) / 1024.0,
        options_.documents, own, kMemoryRatioMax, own <= kMemoryRatioMax ? "ok" : "MISS");
  }

 private:
  std::string table_path(int count) const {
    return dir_ + "/products-" + std::to_string(count) + ".txt";
  }
  std::string logos_path(int count) const {
    return dir_ + "/logos-" + std::to_string(count) + ".txt";
  }

  std::vector<std::string> ormel_args(int count) const {
    return {options_.ormel,
            "-keep",
            "-rx=new",
            "-refpt=upperleft",
            "-home=" + options_.examples + "/home/",
            "-each=1",
            "-skip=1",
            "",
            "-barcode=EAN:ean13",
            options_.examples + "/shelf-label.ai",
            "PR=" + table_path(count),
            "EPS-LOGO=" + logos_path(count),
            "EPS-EAN=" + table_path(count),
            "EPS-PHOTO=" + table_path(count)};
  }

  std::vector<std::string> args_to(int count, const std::string& out) const {
    std::vector<std::string> argv = ormel_args(count);
    argv[7] = "-out=" + dir_ + out;
    return argv;
  }

  ChildRun run_ormel(int count, const std::string& out) {
    std::vector<std::string> argv = ormel_args(count);
    argv[7] = "-out=" + out;
    ChildRun run = run_child(argv, "/dev/null", dir_ + "/err.txt");
    if (run.wait_status != 0) throw std::runtime_error("ormel failed: " + command(argv));
    return run;
  }

  // The label documents that the single Ghostscript runs convert, made once, not timed.
  void make_documents() {
    fs::create_directories(dir_ + "/ai");
    std::vector<std::string> argv = ormel_args(options_.documents);
    argv[7] = "-out=" + dir_ + "/ai/label-####.ai";
    if (run_child(argv, "/dev/null", dir_ + "/err.txt").wait_status != 0) {
      throw std::runtime_error("ormel failed: " + command(argv));
    }
  }

  // One Ghostscript per label, as a shell loop runs it: the page cropped to the label's box.
  double run_singles() {
    const std::string script =
        "i=1; while [ $i -le " + std::to_string(options_.singles) +
        " ]; do n=$(printf %04d $i); gs -q -dSAFER -dBATCH -dNOPAUSE -dEPSCrop "
        "-sDEVICE=pdfwrite -sOutputFile=\"$0\"/single-$n.pdf \"$0\"/ai/label-$n.ai || exit 1; "
        "i=$((i + 1)); done";
    ChildRun run = run_child({"sh", "-c", script, dir_}, "/dev/null", dir_ + "/err.txt");
    if (run.wait_status != 0) throw std::runtime_error("a single Ghostscript run failed");
    return run.seconds;
  }

  static std::string command(const std::vector<std::string>& argv) {
    std::string text;
    for (const std::string& arg : argv) text += arg + " ";
    return text;
  }

  const Options& options_;
  std::string dir_;
};

int run(const Options& options) {
  if (std::system("command -v gs > /dev/null 2>&1") != 0) {
    std::printf("ormel_pages_bench: Ghostscript (gs) not found; skipped\n");
    return 0;
  }
  const std::string dir = make_batch_folder(options, "ormel_pages_bench");
  Bench bench(options, dir);
  bench.prepare();
  bench.run();
  fs::remove_all(dir);
  return 0;
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) {
  return bench::bench_main("ormel_pages_bench", "", argc, argv, bench::parse_options, bench::run);
}
