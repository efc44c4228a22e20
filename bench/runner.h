// Runs a program as a child process (fork/exec), times it with a monotonic clock and reads
// its peak resident memory from wait4's rusage.
#pragma once

#include <cstdint>
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

struct Measurement {
  double median_seconds = 0;
  double cat_median_seconds = 0;
  double sed_median_seconds = 0;
  long peak_rss_kib = 0;  // the largest of all runs
  uint64_t checksum = 0;  // of stdout
};

// The baseline beside cat: a sed substitution over the whole template.
extern const char kSedScript[];

// Runs ormel once with stdout to out_path, for the checksum, then `runs` times with stdout
// to /dev/null, each run after one of `cat template > /dev/null` and one of
// `sed kSedScript template > /dev/null`, so that the three medians come from the same
// stretch of time. Any run that does not exit 0, or an output that does not
// end with "%%EOF\r", throws std::runtime_error with the details (stderr included).
Measurement measure_ormel(const std::vector<std::string>& argv, const std::string& template_path,
                          const std::string& out_path, const std::string& err_path, int runs);

}  // namespace bench
