#include "support/atomic_file.h"

#include <dirent.h>
#include <fcntl.h>
#include <limits.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "support/error.h"

namespace {

// The temporary files being written, for the signal handler: a process ended by Ctrl-C or
// kill leaves no part of a file behind. Two at most: Ghostscript opens a page's file before
// this process has renamed the page before it.
constexpr int kSlots = 2;
char pending[kSlots][PATH_MAX];

// A child that writes the pending files (Ghostscript): it is ended first, or it could go on
// writing them after they are removed.
volatile sig_atomic_t writing_child = 0;

void on_ending_signal(int number) {
  if (writing_child > 0) {
    ::kill(writing_child, SIGKILL);
    ::waitpid(writing_child, nullptr, 0);
  }
  for (const char* path : pending) {
    if (path[0] != '\0') ::unlink(path);
  }
  ::signal(number, SIG_DFL);
  ::raise(number);
}

void watch_ending_signals() {
  static bool installed = false;
  if (installed) return;
  installed = true;
  ::signal(SIGXFSZ, SIG_IGN);
  for (int number : {SIGINT, SIGTERM, SIGHUP, SIGPIPE}) {
    struct sigaction action = {};
    if (::sigaction(number, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) continue;
    action.sa_handler = on_ending_signal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = 0;
    ::sigaction(number, &action, nullptr);
  }
}

// Signals are held while the name in pending changes, so the handler never sees half of it.
class SIGNALS_HELD {
 public:
  SIGNALS_HELD() {
    sigset_t all;
    sigfillset(&all);
    ::sigprocmask(SIG_BLOCK, &all, &before);
  }
  ~SIGNALS_HELD() { ::sigprocmask(SIG_SETMASK, &before, nullptr); }

 private:
  sigset_t before;
};

void set_pending(int slot, const std::string& path) {
  SIGNALS_HELD held;
  char* entry = pending[slot];
  const size_t length = path.size() < PATH_MAX ? path.size() : PATH_MAX - 1;
  std::memcpy(entry, path.data(), length);
  entry[length] = '\0';
}

int free_slot() {
  for (int slot = 0; slot < kSlots; ++slot) {
    if (pending[slot][0] == '\0') return slot;
  }
  fail("internal error: more than %d temporary files at once\n", kSlots);
}

// The machine's name as it can stand in a file name.
std::string host_name() {
  char name[256] = {};
  if (::gethostname(name, sizeof name - 1) != 0) return "host";
  std::string host(name, std::min<size_t>(std::strlen(name), 64));
  for (char& c : host) {
    if (c == '/' || c == '-') c = '_';
  }
  return host;
}

// A file written by another process, or a folder, brought to the disk.
void sync_file(const std::string& path) {
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return;
  const bool synced = ::fsync(fd) == 0;
  const int error = errno;
  ::close(fd);
  if (!synced) fail("cannot sync %s: %s\n", path.c_str(), std::strerror(error));
}

}  // namespace

void end_child_on_signal(pid_t child) {
  watch_ending_signals();
  writing_child = child;
}

std::string temporary_stem(const std::string& folder) {
  return (folder == "/" ? "" : folder) + "/.ormel-" + host_name() + "-" +
         std::to_string(::getpid()) + "-";
}

std::string folder_of(const std::string& path) {
  const size_t slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

// The temporary name is short and hidden, whatever the target's length; a name another
// process holds is passed over.
ATOMIC_FILE::ATOMIC_FILE(std::string target_path) : target(std::move(target_path)) {
  watch_ending_signals();
  slot = free_slot();
  const std::string folder = folder_of(target);
  const std::string stem = temporary_stem(folder);
  for (unsigned attempt = 0;; ++attempt) {
    temporary = stem + std::to_string(attempt) + ".tmp";
    set_pending(slot, temporary);
    fd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (fd >= 0) return;
    const int error = errno;
    set_pending(slot, "");
    if (error != EEXIST || attempt == 1000) {
      fail("cannot create a file in %s: %s\n", folder.c_str(), std::strerror(error));
    }
  }
}

ATOMIC_FILE::ATOMIC_FILE(std::string target_path, std::string written_by_another)
    : target(std::move(target_path)), temporary(std::move(written_by_another)) {
  watch_ending_signals();
  slot = free_slot();
  set_pending(slot, temporary);
}

ATOMIC_FILE::~ATOMIC_FILE() {
  if (fd >= 0) ::close(fd);
  if (!temporary.empty()) {
    ::unlink(temporary.c_str());
    set_pending(slot, "");
  }
}

void ATOMIC_FILE::commit(bool sync) {
  const int closing = fd;
  fd = -1;
  if (closing >= 0) {
    if (sync && ::fsync(closing) != 0) {
      const int error = errno;
      ::close(closing);
      throw Error("output write error\n", std::strerror(error));
    }
    if (::close(closing) != 0 && errno != EINTR) {
      throw Error("output write error\n", std::strerror(errno));
    }
  } else if (sync) {
    sync_file(temporary);
  }
  if (::rename(temporary.c_str(), target.c_str()) != 0) {
    fail("cannot rename the new file to %s: %s\n", target.c_str(), std::strerror(errno));
  }
  temporary.clear();
  set_pending(slot, "");
  if (sync) sync_file(folder_of(target));
}

// Only names of this host are looked at: a run on another machine that writes into the same
// shared folder may be alive though no process here has its number.
void remove_dead_temporaries(const std::string& folder) {
  DIR* entries = ::opendir(folder.c_str());
  if (!entries) return;
  const std::string prefix = ".ormel-" + host_name() + "-";
  while (const dirent* entry = ::readdir(entries)) {
    const std::string name = entry->d_name;
    if (name.compare(0, prefix.size(), prefix) != 0) continue;
    long pid = 0;
    if (std::sscanf(name.c_str() + prefix.size(), "%ld-", &pid) != 1 || pid <= 0 ||
        name.compare(prefix.size(), std::to_string(pid).size() + 1, std::to_string(pid) + "-") !=
            0) {
      continue;
    }
    if (::kill(static_cast<pid_t>(pid), 0) != 0 && errno == ESRCH) {
      ::unlink((folder + "/" + name).c_str());
    }
  }
  ::closedir(entries);
}
