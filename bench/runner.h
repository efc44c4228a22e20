// Runs a program as a child process (fork/exec), times it with a monotonic clock and reads
// its peak resident memory from wait4's rusage.
#pragma once

#include <cstdint>
#include <cstdio>
#include <exception>
#include <functional>
#include <string>
#include <vector>

namespace bench {

struct ChildRun {
  double seconds = 0;
  int wait_status = 0;
  long max_rss_kib = 0;
};

// Starts the small process that forks every later child. Linux counts the resident size a
// child inherits at fork in the child's peak, and the bench grows to tens of megabytes
// while it generates inputs and reads outputs: call this first, while the bench is small.
void start_spawner();
// Ends the spawner and waits for it.
void stop_spawner();

// argv[0] is looked up on PATH when it holds no '/'. stdin is /dev/null.
ChildRun run_child(const std::vector<std::string>& argv, const std::string& stdout_path,
                   const std::string& stderr_path);

// 64-bit FNV-1a of a whole file; `tail` receives its last tail_length bytes (or fewer).
uint64_t fnv1a_file(const std::string& path, size_t tail_length, std::string* tail);

double median(std::vector<double> values);

// The whole file; throws std::runtime_error when it cannot be opened.
std::string read_file(const std::string& path);
// Creates or empties the file and writes `bytes`; throws std::runtime_error on failure.
void write_file(const std::string& path, const std::string& bytes);

// The options every batch benchmark takes:
//   path/to/ormel [--runs N] [--documents N] [--dir DIR]
struct BatchOptions {
  std::string ormel;  // made absolute
  int runs = 3;
  int documents = 1000;
  std::string dir;  // where the bench makes its folder; empty: $TMPDIR or /tmp
};

// The value of the option being parsed, taken only when asked for: an option no one knows is
// unexpected even at the end of the command line, not one without a value.
using OptionValue = std::function<std::string()>;
// A bench's own `--name value` options; false for a name it does not know.
using OwnOption = std::function<bool(const std::string& name, const OptionValue& value)>;

// Parses the command line into `options`, handing any other `--name` to `own`; throws
// std::invalid_argument for a usage error. The limits are checked apart, by
// check_batch_limits, so that a bench can add its own to them.
void parse_batch_options(int argc, char** argv, BatchOptions* options,
                         const OwnOption& own = nullptr);

// Throws std::invalid_argument unless --runs is from 1, --documents from 100 and the bench's
// own limits hold (`own_hold`); the one message names them all, `own_limits` last.
void check_batch_limits(const BatchOptions& options, bool own_hold = true,
                        const char* own_limits = "");

// A new folder `name`.XXXXXX in options.dir, for the bench's files, said on stdout with the
// ormel that runs on them; the bench removes it at the end.
std::string make_batch_folder(const BatchOptions& options, const std::string& name);

// The main of a benchmark: parses its options (a std::exception is a usage error, status 2,
// with usage after the message), then runs it between start_spawner and stop_spawner; a
// std::exception from the run is a failure (status 1).
template <typename Parse, typename Run>
int bench_main(const char* name, const char* usage, int argc, char** argv, Parse parse, Run run) {
  decltype(parse(argc, argv)) options;
  try {
    options = parse(argc, argv);
  } catch (const std::exception& e) {
    std::fprintf(stderr, "%s: %s\n%s", name, e.what(), usage);
    return 2;
  }
  int status = 1;
  try {
    start_spawner();
    status = run(options);
  } catch (const std::exception& e) {
    std::fflush(stdout);
    std::fprintf(stderr, "%s: FAILED: %s\n", name, e.what());
  }
  stop_spawner();
  return status;
}

struct Measurement {
  double median_seconds = 0;
  double cat_median_seconds = 0;
  double sed_median_seconds = 0;
  long peak_rss_kib = 0;  // the largest of all runs
  uint64_t checksum = 0;  // of stdout
};

// The baseline beside cat: a sed substitution over the whole template.
extern const char kSedScript[];
// As an output path: a pipe that the spawner reads as fast as it can.
extern const char kPipeOutput[];

// Runs ormel once with stdout to out_path, for the checksum, then `runs` times with stdout
// to /dev/null, each run after one of `cat template > /dev/null` and one of
// `sed kSedScript template > /dev/null`, so that the three medians come from the same
// stretch of time. Any run that does not exit 0, or an output that does not
// end with "%%EOF\r", throws std::runtime_error with the details (stderr included).
Measurement measure_ormel(const std::vector<std::string>& argv, const std::string& template_path,
                          const std::string& out_path, const std::string& err_path, int runs);

struct OutputMedians {
  double seconds = 0;
  double cat_seconds = 0;
  double cat_ratio() const { return seconds / cat_seconds; }
};

// Times ormel and `cat template` in turn, `runs` times each, with stdout to out_path: a file
// (removed before each run) or kPipeOutput.
OutputMedians measure_output(const std::vector<std::string>& argv, const std::string& template_path,
                             const std::string& out_path, const std::string& err_path, int runs);

}  // namespace bench
