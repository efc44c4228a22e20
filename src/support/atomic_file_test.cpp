#include "support/atomic_file.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <filesystem>

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
