#include "output/pages.h"

#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "support/error.h"

namespace {

// A name no other process writing into the folder, on this machine or another, will pick.
std::string page_pattern(const std::string& folder) {
  unsigned long long token = 0;
  if (::getrandom(&token, sizeof token, 0) != sizeof token) {
    fail("cannot start Ghostscript: no random bytes: %s\n", std::strerror(errno));
  }
  char name[32];
  std::snprintf(name, sizeof name, "%016llx-", token);
  return temporary_stem(folder) + name;
}

dev_t device_of(const std::string& folder) {
  struct stat status;
  if (::stat(folder.c_str(), &status) != 0) {
    fail("cannot write into %s: %s\n", folder.c_str(), std::strerror(errno));
  }
  return status.st_dev;
}

// The pages are renamed into their folders, which rename() does only within a file system.
void check_one_file_system(const std::vector<std::string>& names) {
  const std::string first = folder_of(names.front());
  const dev_t device = device_of(first);
  for (const std::string& name : names) {
    const std::string folder = folder_of(name);
    if (folder != first && device_of(folder) != device) {
      fail("%s: %s is not on the file system of %s, where the run's pages are written\n",
           name.c_str(), folder.c_str(), first.c_str());
    }
  }
}

}  // namespace

ONE_FILE_PAGES::ONE_FILE_PAGES(const SETTINGS& settings, const std::string& name)
    : file(name), renderer(settings, gs_output_name(file.temporary_name())) {}

void ONE_FILE_PAGES::finish() {
  renderer.finish();
  file.commit();
}

PAGE_FILES::PAGE_FILES(const SETTINGS& settings, std::vector<std::string> names)
    : targets((check_one_file_system(names), std::move(names))),
      pattern(page_pattern(folder_of(targets.front()))),
      renderer(settings, gs_output_name(pattern) + "%d.tmp") {}

// The page after the last has no name: the PDF device opens its file as the page before ends,
// and it is removed with the others.
std::unique_ptr<ATOMIC_FILE> PAGE_FILES::page_file(size_t page) const {
  const std::string target = page <= targets.size() ? targets[page - 1] : "";
  return std::make_unique<ATOMIC_FILE>(target, pattern + std::to_string(page) + ".tmp");
}

void PAGE_FILES::finish() {
  renderer.finish();
  current.reset();
}

void PAGE_FILES::add(std::string_view document) {
  ++added;
  if (!current) current = page_file(added);
  following = page_file(added + 1);
  renderer.render(document);
  current->commit();
  current = std::move(following);
}
