#include "support/atomic_file.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <algorithm>
#include <filesystem>

#include "support/error.h"
#include "support/output.h"
#include "support/test_temp_dir.h"

namespace {

std::vector<std::string> entries(const std::string& folder) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    names.push_back(entry.path().filename().string());
  }
  return names;
}

}  // namespace

// A new file gets what the umask leaves of 0666, as any program's new file would; an
// existing target is replaced whole, with the new file's permissions.
TEST(AtomicFileTest, PermissionsFollowTheUmask) {
  TEST_TEMP_DIR dir;
  const std::string target = dir.write("doc.ai", "old");
  ::chmod(target.c_str(), 0600);
  const mode_t before = ::umask(027);
  {
    ATOMIC_FILE file(target);
    ASSERT_EQ(3, ::write(file.descriptor(), "new", 3));
    file.commit();
  }
  ::umask(before);
  struct stat status;
  ASSERT_EQ(0, ::stat(target.c_str(), &status));
  EXPECT_EQ(0640u, status.st_mode & 0777);
  EXPECT_EQ(std::vector<std::string>{"doc.ai"}, entries(dir.path()));
}

// A process ended by a signal while it writes leaves neither a temporary file nor a
// changed target, and still ends by that signal.
TEST(AtomicFileTest, EndingSignalRemovesTheTemporaryFile) {
  TEST_TEMP_DIR dir;
  const std::string target = dir.write("doc.ai", "old");
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    ATOMIC_FILE file(target);
    if (::write(file.descriptor(), "new", 3) != 3) _exit(3);
    ::raise(SIGTERM);
    _exit(4);
  }
  int status = 0;
  ASSERT_EQ(child, ::waitpid(child, &status, 0));
  EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGTERM);
  EXPECT_EQ(std::vector<std::string>{"doc.ai"}, entries(dir.path()));
}

// A file past the size limit of the process (ulimit -f) fails as a full disk does: the run
// can say so, and no temporary file is left.
TEST(AtomicFileTest, SizeLimitFailsTheWriteAndLeavesNoTemporaryFile) {
  TEST_TEMP_DIR dir;
  const std::string target = dir.path() + "/doc.ai";
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    const rlimit limit{4096, 4096};
    if (::setrlimit(RLIMIT_FSIZE, &limit) != 0) _exit(3);
    try {
      ATOMIC_FILE file(target);
      Output out(file.descriptor());
      out.write(std::string(10000, 'x'));
      out.flush();
      file.commit();
    } catch (const Error& error) {
      _exit(error.reason() == "File too large" ? 0 : 5);
    }
    _exit(4);
  }
  int status = 0;
  ASSERT_EQ(child, ::waitpid(child, &status, 0));
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
  EXPECT_TRUE(entries(dir.path()).empty());
}

// Temporary files of runs on this host that are gone are removed; a live run's stays, and so
// do other hosts' and other files.
TEST(AtomicFileTest, TemporaryFilesOfDeadRunsAreRemoved) {
  TEST_TEMP_DIR dir;
  ATOMIC_FILE file(dir.path() + "/doc.ai");
  const std::string live = entries(dir.path()).at(0);
  // No process may have a number past the system's largest.
  const std::string pid = std::to_string(::getpid());
  const std::string dead =
      live.substr(0, live.rfind(pid)) + "2147483646" + live.substr(live.rfind(pid) + pid.size());
  dir.write(dead, "");
  dir.write(".ormel-elsewhere-2147483646-0.tmp", "");
  dir.write("notes.txt", "");
  remove_dead_temporaries(dir.path());
  std::vector<std::string> left = entries(dir.path());
  std::vector<std::string> kept = {".ormel-elsewhere-2147483646-0.tmp", live, "notes.txt"};
  std::sort(left.begin(), left.end());
  std::sort(kept.begin(), kept.end());
  EXPECT_EQ(kept, left);
}
