// Where the pages go that Ghostscript renders from a run's documents (settings.form pdf or
// png): every page into one file (the PDF of a run or of a shard, the one page of a run
// without "-each"), or each document's page into a file of its own. Either way a file is
// written under a temporary name and takes its own name only once complete, and a failure
// leaves no part of one behind.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "output/ghostscript.h"
#include "support/atomic_file.h"

struct SETTINGS;

class PAGES {
 public:
  virtual ~PAGES() = default;
  // Renders the next document's page; a file of its own is complete on return.
  virtual void add(std::string_view document) = 0;
  // After the last page: the one file is complete and takes its name.
  virtual void finish() = 0;
};

// Every page into the file name.
class ONE_FILE_PAGES : public PAGES {
 public:
  ONE_FILE_PAGES(const SETTINGS& settings, const std::string& name);
  void add(std::string_view document) override { renderer.render(document); }
  void finish() override;

 private:
  ATOMIC_FILE file;  // declared first, so Ghostscript has ended before it is removed
  GHOSTSCRIPT renderer;
};

// The page of the k-th document added into names[k - 1]. Ghostscript writes the pages into
// the folder of the first name, so every name's folder must be on its file system.
class PAGE_FILES : public PAGES {
 public:
  PAGE_FILES(const SETTINGS& settings, std::vector<std::string> names);
  void add(std::string_view document) override;
  void finish() override;

 private:
  std::unique_ptr<ATOMIC_FILE> page_file(size_t page) const;

  std::vector<std::string> targets;
  std::string pattern;  // of the pages' temporary names, "%d" their number
  size_t added = 0;
  // The page being rendered and the next one, which Ghostscript may open before this
  // process has renamed the first.
  std::unique_ptr<ATOMIC_FILE> current;
  std::unique_ptr<ATOMIC_FILE> following;
  GHOSTSCRIPT renderer;
};
