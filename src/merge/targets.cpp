#include "merge/targets.h"

#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>
#include <cstring>
#include <unordered_map>

#include "merge/output_names.h"
#include "support/atomic_file.h"
#include "support/error.h"

void TARGETS::add_input(const std::string& path) {
  struct stat status;
  if (::stat(path.c_str(), &status) == 0) inputs.insert({status.st_dev, status.st_ino});
}

// Only a regular file is replaced: a name held by a folder, a FIFO, a device or a socket,
// or by a file the run reads, would lose it or hang the run.
void TARGETS::check(const std::string& name, const std::string& prefix) const {
  struct stat status;
  if (::stat(name.c_str(), &status) != 0) return;
  if (S_ISDIR(status.st_mode)) fail("%sa folder has that name\n", prefix.c_str());
  if (!S_ISREG(status.st_mode)) {
    fail("%s%s has that name, and only a regular file is written over\n", prefix.c_str(),
         S_ISFIFO(status.st_mode)   ? "a FIFO"
         : S_ISSOCK(status.st_mode) ? "a socket"
                                    : "a device");
  }
  if (inputs.count({status.st_dev, status.st_ino})) {
    fail("%san input of this run has that name\n", prefix.c_str());
  }
}

// A folder that is missing or cannot be written, or a name that may not be written over,
// would fail in the middle of the batch: they fail before it.
void TARGETS::check_all(const std::vector<std::string>& names,
                        const std::vector<long long>& numbers) const {
  std::set<std::string> folders;
  for (long long number : numbers) {
    const std::string& name = names[static_cast<size_t>(number - 1)];
    const std::string prefix = "document " + std::to_string(number) + " (" + name + "): ";
    const std::string folder = folder_of(name);
    if (folders.insert(folder).second) {
      if (::access(folder.c_str(), W_OK | X_OK) != 0) {
        fail("%scannot write into %s: %s\n", prefix.c_str(), folder.c_str(), std::strerror(errno));
      }
      remove_dead_temporaries(folder);
    }
    check(name, prefix);
  }
}

void check_clashes(const std::vector<std::string>& names) {
  std::unordered_map<std::string, long long> taken;
  for (long long number = 1; number <= static_cast<long long>(names.size()); ++number) {
    const std::string& name = names[static_cast<size_t>(number - 1)];
    auto [first, fresh] = taken.emplace(case_folded(name), number);
    if (fresh) continue;
    const std::string& other = names[static_cast<size_t>(first->second - 1)];
    if (other == name) {
      fail("documents %lld and %lld would both be written to %s\n", first->second, number,
           name.c_str());
    }
    fail(
        "documents %lld and %lld would be written to %s and %s, one name on the shared "
        "folders of Windows and Mac\n",
        first->second, number, other.c_str(), name.c_str());
  }
}
