// A file replaced whole or not at all: written under a temporary name in the target's
// folder, then renamed over the target once complete and closed. Readers of the target see
// the old file or the whole new one; a failure, or a signal that ends the process, removes
// the temporary file and leaves the target as it was. A file grown past the process's size
// limit (ulimit -f) fails as a full disk does, rather than ending the process.
#pragma once

#include <sys/types.h>

#include <string>

class ATOMIC_FILE {
 public:
  // Creates the temporary file, with the permissions the umask gives a new file
  // ("cannot create a file in FOLDER: REASON" on failure).
  explicit ATOMIC_FILE(std::string target);
  // A file that another process (Ghostscript) writes for this one under the temporary name
  // given, in the target's folder; descriptor() is -1. Two such files may be pending at once.
  ATOMIC_FILE(std::string target, std::string temporary);
  // Removes the temporary file unless commit() has renamed it.
  ~ATOMIC_FILE();
  ATOMIC_FILE(const ATOMIC_FILE&) = delete;
  ATOMIC_FILE& operator=(const ATOMIC_FILE&) = delete;

  int descriptor() const { return fd; }
  const std::string& temporary_name() const { return temporary; }
  // Closes the file ("output write error" when the system reports a lost write) and renames
  // it over the target ("cannot rename the new file to TARGET: REASON"). With sync, the
  // file's bytes reach the disk before the rename, and the folder's new entry after it.
  void commit(bool sync = false);

 private:
  std::string target;
  std::string temporary;
  int fd = -1;
  int slot = 0;  // of the signal handler's table of pending files
};

// The folder a path's file lies in: "." for a bare name, "/" for a file at the root.
std::string folder_of(const std::string& path);

// The start of the names of this process's temporary files in folder,
// "FOLDER/.ormel-HOST-PID-": what follows tells them apart.
std::string temporary_stem(const std::string& folder);

// Removes from folder the temporary files that runs of ormel which no longer live left
// behind (killed with SIGKILL, or by a power cut).
void remove_dead_temporaries(const std::string& folder);

// A signal that ends the process ends child too (0: no child), before the temporary files
// are removed: a child that writes them (Ghostscript) would otherwise go on.
void end_child_on_signal(pid_t child);
