// Where a run's documents may go. A document never lands on something else: not on a
// folder, a FIFO, a device or a socket, nor on any file the run reads; every folder it goes
// into must be writable, and is rid of the temporary files that dead runs left there; no
// two documents share a name, as written or as the shared folders of Windows and Mac
// compare names. Everything is checked before the first file is written.
#pragma once

#include <sys/types.h>
#include <set>
#include <string>
#include <vector>

class TARGETS {
 public:
  // A file the run reads (when it exists): no document may be written over it.
  void add_input(const std::string& path);
  // Fails, the message after prefix, when name may not be written over.
  void check(const std::string& name, const std::string& prefix) const;
  // The documents numbers of a batch, names[k - 1] the name of document k: each checked,
  // each folder too.
  void check_all(const std::vector<std::string>& names,
                 const std::vector<long long>& numbers) const;

 private:
  // An input file as the file system knows it, however its path is spelled.
  struct FILE_ID {
    dev_t device;
    ino_t inode;
    bool operator<(const FILE_ID& other) const {
      return device != other.device ? device < other.device : inode < other.inode;
    }
  };
  std::set<FILE_ID> inputs;
};

// Fails when two documents' names are one: "documents J and K would both be written to
// NAME", or, for names that differ only in case, "... would be written to A and B, one name
// on the shared folders of Windows and Mac".
void check_clashes(const std::vector<std::string>& names);
