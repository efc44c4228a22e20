#include "runner.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace bench {
namespace {

double now_seconds() {
  timespec ts{};
  clock_gettime(CLOCK_MONOTONIC, &ts);
  return static_cast<double>(ts.tv_sec) + static_cast<double>(ts.tv_nsec) * 1e-9;
}

// Only async-signal-safe calls between fork and exec. pipe_out, when not -1, is the write end
// of the pipe that stdout goes to.
[[noreturn]] void exec_child(char* const* argv, const char* stdout_path, const char* stderr_path,
                             int pipe_out) {
  int in = open("/dev/null", O_RDONLY);
  int out = pipe_out >= 0 ? pipe_out : open(stdout_path, O_WRONLY | O_CREAT | O_TRUNC, 0644);
  int err = open(stderr_path, O_WRONLY | O_CREAT | O_TRUNC, 0644);
  if (in < 0 || out < 0 || err < 0 || dup2(in, 0) < 0 || dup2(out, 1) < 0 || dup2(err, 2) < 0) {
    _exit(126);
  }
  execvp(argv[0], argv);
  static const char kMessage[] = "ormel_bench: exec failed\n";
  ssize_t ignored = write(2, kMessage, sizeof kMessage - 1);
  (void)ignored;
  _exit(127);
}

std::string read_text(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

std::string describe_status(int wait_status) {
  if (WIFEXITED(wait_status)) return "exit status " + std::to_string(WEXITSTATUS(wait_status));
  if (WIFSIGNALED(wait_status)) return "killed by signal " + std::to_string(WTERMSIG(wait_status));
  return "wait status " + std::to_string(wait_status);
}

std::string command_line(const std::vector<std::string>& argv) {
  std::string text;
  for (const std::string& arg : argv) text += (text.empty() ? "" : " ") + arg;
  return text;
}

}  // namespace

namespace {

// Reads what the child writes to the pipe, as a fast reader would, until it closes it.
void drain_pipe(int ends[2]) {
  close(ends[1]);
  std::vector<char> buffer(1 << 20);
  for (;;) {
    ssize_t got = read(ends[0], buffer.data(), buffer.size());
    if (got == 0 || (got < 0 && errno != EINTR)) break;
  }
  close(ends[0]);
}

// Forks, execs and waits for one child; runs in the spawner.
ChildRun fork_and_wait(const std::vector<std::string>& argv, const std::string& stdout_path,
                       const std::string& stderr_path) {
  std::vector<char*> args;
  for (const std::string& arg : argv) args.push_back(const_cast<char*>(arg.c_str()));
  args.push_back(nullptr);

  int drain[2] = {-1, -1};
  if (stdout_path == kPipeOutput && pipe(drain) != 0) throw std::runtime_error("pipe failed");
  // A file written before is removed first, so that no run pays for truncating it.
  struct stat status {};
  if (stat(stdout_path.c_str(), &status) == 0 && S_ISREG(status.st_mode)) {
    unlink(stdout_path.c_str());
  }
  ChildRun run;
  double start = now_seconds();
  pid_t pid = fork();
  if (pid < 0) throw std::runtime_error(std::string("fork: ") + std::strerror(errno));
  if (pid == 0) {
    if (drain[0] >= 0) close(drain[0]);
    exec_child(args.data(), stdout_path.c_str(), stderr_path.c_str(), drain[1]);
  }
  if (drain[0] >= 0) drain_pipe(drain);
  rusage usage{};
  pid_t waited;
  do {
    waited = wait4(pid, &run.wait_status, 0, &usage);
  } while (waited < 0 && errno == EINTR);
  run.seconds = now_seconds() - start;
  if (waited < 0) throw std::runtime_error(std::string("wait4: ") + std::strerror(errno));
  run.max_rss_kib = usage.ru_maxrss;
  return run;
}

void write_all(int fd, const void* data, size_t size) {
  const char* p = static_cast<const char*>(data);
  while (size > 0) {
    ssize_t n = write(fd, p, size);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) throw std::runtime_error("spawner pipe write failed");
    p += n;
    size -= static_cast<size_t>(n);
  }
}

// False at the end of the stream before any byte.
bool read_all(int fd, void* data, size_t size) {
  char* p = static_cast<char*>(data);
  size_t got = 0;
  while (got < size) {
    ssize_t n = read(fd, p + got, size - got);
    if (n < 0 && errno == EINTR) continue;
    if (n == 0 && got == 0) return false;
    if (n <= 0) throw std::runtime_error("spawner pipe read failed");
    got += static_cast<size_t>(n);
  }
  return true;
}

void write_strings(int fd, const std::vector<std::string>& strings) {
  size_t count = strings.size();
  write_all(fd, &count, sizeof count);
  for (const std::string& text : strings) {
    size_t length = text.size();
    write_all(fd, &length, sizeof length);
    write_all(fd, text.data(), length);
  }
}

bool read_strings(int fd, std::vector<std::string>* strings) {
  size_t count = 0;
  if (!read_all(fd, &count, sizeof count)) return false;
  strings->assign(count, std::string());
  for (std::string& text : *strings) {
    size_t length = 0;
    read_all(fd, &length, sizeof length);
    text.resize(length);
    if (length > 0) read_all(fd, &text[0], length);
  }
  return true;
}

// The spawner's loop: each request is argv followed by the stdout and stderr paths.
[[noreturn]] void serve(int requests, int replies) {
  std::vector<std::string> request;
  while (read_strings(requests, &request)) {
    std::string stderr_path = request.back();
    request.pop_back();
    std::string stdout_path = request.back();
    request.pop_back();
    ChildRun run = fork_and_wait(request, stdout_path, stderr_path);
    write_all(replies, &run, sizeof run);
  }
  _exit(0);
}

struct Spawner {
  int requests = -1;
  int replies = -1;
  pid_t pid = -1;
};

Spawner spawner;

}  // namespace

void start_spawner() {
  int to_spawner[2];
  int from_spawner[2];
  if (pipe(to_spawner) != 0 || pipe(from_spawner) != 0) throw std::runtime_error("pipe failed");
  pid_t pid = fork();
  if (pid < 0) throw std::runtime_error(std::string("fork: ") + std::strerror(errno));
  if (pid == 0) {
    close(to_spawner[1]);
    close(from_spawner[0]);
    serve(to_spawner[0], from_spawner[1]);
  }
  close(to_spawner[0]);
  close(from_spawner[1]);
  spawner.requests = to_spawner[1];
  spawner.replies = from_spawner[0];
  spawner.pid = pid;
}

void stop_spawner() {
  if (spawner.pid < 0) return;
  close(spawner.requests);  // the spawner reads the end of its requests and exits
  close(spawner.replies);
  int status;
  while (waitpid(spawner.pid, &status, 0) < 0 && errno == EINTR) {
  }
  spawner = Spawner();
}

ChildRun run_child(const std::vector<std::string>& argv, const std::string& stdout_path,
                   const std::string& stderr_path) {
  if (spawner.requests < 0) return fork_and_wait(argv, stdout_path, stderr_path);
  std::vector<std::string> request = argv;
  request.push_back(stdout_path);
  request.push_back(stderr_path);
  write_strings(spawner.requests, request);
  ChildRun run;
  if (!read_all(spawner.replies, &run, sizeof run)) throw std::runtime_error("spawner ended");
  return run;
}

uint64_t fnv1a_file(const std::string& path, size_t tail_length, std::string* tail) {
  int fd = open(path.c_str(), O_RDONLY);
  if (fd < 0) throw std::runtime_error("cannot open " + path);
  uint64_t hash = 0xcbf29ce484222325ULL;
  std::vector<unsigned char> buffer(1 << 20);
  tail->clear();
  for (;;) {
    ssize_t got = read(fd, buffer.data(), buffer.size());
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) {
      close(fd);
      throw std::runtime_error("cannot read " + path);
    }
    if (got == 0) break;
    auto count = static_cast<size_t>(got);
    for (size_t i = 0; i < count; ++i) {
      hash ^= buffer[i];
      hash *= 0x100000001b3ULL;
    }
    tail->append(
        reinterpret_cast<const char*>(buffer.data()) + (count - std::min(count, tail_length)),
        std::min(count, tail_length));
    if (tail->size() > tail_length) tail->erase(0, tail->size() - tail_length);
  }
  close(fd);
  return hash;
}

double median(std::vector<double> values) {
  if (values.empty()) return 0;
  std::sort(values.begin(), values.end());
  size_t middle = values.size() / 2;
  if (values.size() % 2 == 1) return values[middle];
  return (values[middle - 1] + values[middle]) / 2;
}

std::string read_file(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw std::runtime_error("cannot read " + path);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void write_file(const std::string& path, const std::string& bytes) {
  std::FILE* file = std::fopen(path.c_str(), "wb");
  if (file == nullptr) throw std::runtime_error("cannot create " + path);
  bool ok = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
  if (std::fclose(file) != 0 || !ok) throw std::runtime_error("cannot write " + path);
}

void parse_batch_options(int argc, char** argv, BatchOptions* options, const OwnOption& own) {
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    const OptionValue value = [&]() -> std::string {
      if (i + 1 >= argc) throw std::invalid_argument(arg + " needs a value");
      return argv[++i];
    };
    const bool option = arg.rfind("--", 0) == 0;
    if (arg == "--runs") {
      options->runs = std::stoi(value());
    } else if (arg == "--documents") {
      options->documents = std::stoi(value());
    } else if (arg == "--dir") {
      options->dir = value();
    } else if (!option && options->ormel.empty()) {
      options->ormel = std::filesystem::absolute(arg).string();
    } else if (!option || !own || !own(arg, value)) {
      throw std::invalid_argument("unexpected argument " + arg);
    }
  }
  if (options->ormel.empty()) throw std::invalid_argument("no ormel binary given");
}

void check_batch_limits(const BatchOptions& options, bool own_hold, const char* own_limits) {
  if (options.runs < 1 || options.documents < 100 || !own_hold) {
    throw std::invalid_argument(std::string("--runs from 1, --documents from 100") + own_limits);
  }
}

std::string make_batch_folder(const BatchOptions& options, const std::string& name) {
  namespace fs = std::filesystem;
  const fs::path parent = options.dir.empty() ? fs::temp_directory_path() : fs::path(options.dir);
  std::string dir = (parent / (name + ".XXXXXX")).string();
  if (!mkdtemp(dir.data())) throw std::runtime_error("cannot create " + dir);
  std::printf("files in %s (%s)\n", dir.c_str(), options.ormel.c_str());
  return dir;
}

namespace {

ChildRun run_ormel(const std::vector<std::string>& argv, const std::string& out_path,
                   const std::string& err_path) {
  ChildRun run = run_child(argv, out_path, err_path);
  if (!WIFEXITED(run.wait_status) || WEXITSTATUS(run.wait_status) != 0) {
    throw std::runtime_error(command_line(argv) + "\n  " + describe_status(run.wait_status) +
                             "; stderr: " + read_text(err_path));
  }
  return run;
}

// Runs a baseline program on the template, stdout to out_path, and returns its time.
double time_baseline(const std::vector<std::string>& argv, const std::string& err_path,
                     const std::string& out_path = "/dev/null") {
  ChildRun run = run_child(argv, out_path, err_path);
  if (!WIFEXITED(run.wait_status) || WEXITSTATUS(run.wait_status) != 0) {
    throw std::runtime_error(command_line(argv) + ": " + describe_status(run.wait_status));
  }
  return run.seconds;
}

}  // namespace

const char kSedScript[] = "s/TX-5-2/value/g";
const char kPipeOutput[] = "|pipe";

Measurement measure_ormel(const std::vector<std::string>& argv, const std::string& template_path,
                          const std::string& out_path, const std::string& err_path, int runs) {
  Measurement result;
  result.peak_rss_kib = run_ormel(argv, out_path, err_path).max_rss_kib;
  std::string tail;
  result.checksum = fnv1a_file(out_path, 6, &tail);
  if (tail != "%%EOF\r") {
    throw std::runtime_error(command_line(argv) + "\n  output does not end with %%EOF and CR");
  }
  std::vector<double> times;
  std::vector<double> cat_times;
  std::vector<double> sed_times;
  for (int i = 0; i < runs; ++i) {
    cat_times.push_back(time_baseline({"cat", template_path}, err_path));
    sed_times.push_back(time_baseline({"sed", kSedScript, template_path}, err_path));
    ChildRun run = run_ormel(argv, "/dev/null", err_path);
    result.peak_rss_kib = std::max(result.peak_rss_kib, run.max_rss_kib);
    times.push_back(run.seconds);
  }
  result.median_seconds = median(times);
  result.cat_median_seconds = median(cat_times);
  result.sed_median_seconds = median(sed_times);
  return result;
}

OutputMedians measure_output(const std::vector<std::string>& argv, const std::string& template_path,
                             const std::string& out_path, const std::string& err_path, int runs) {
  std::vector<double> times;
  std::vector<double> cat_times;
  for (int i = 0; i < runs; ++i) {
    cat_times.push_back(time_baseline({"cat", template_path}, err_path, out_path));
    times.push_back(run_ormel(argv, out_path, err_path).seconds);
  }
  return {median(times), median(cat_times)};
}

}  // namespace bench
