#include "support/file_io.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>
#include <string>

#include "support/error.h"
#include "support/test_temp_dir.h"

// Mapped files, pipes and memory give the same bytes, also once moved. (The golden cases
// error-template-missing and error-template-unreadable show the failures.)
TEST(FileBytesTest, RegularFilesPipesAndMemoryGiveTheSameBytes) {
  TEST_TEMP_DIR dir;
  const std::string bytes("%!PS-Adobe\r\0binary\xff\r%%EOF\r", 24);
  const std::string path = dir.write("t.ai", bytes);
  EXPECT_EQ("", FileBytes::read(dir.write("empty.ai", "").c_str(), "", "").view());
  FileBytes mapped = FileBytes::read(path.c_str(), "", "");
  FileBytes moved(std::move(mapped));
  EXPECT_EQ(bytes, moved.view());
  mapped = std::move(moved);
  EXPECT_EQ(bytes, mapped.view());
  mapped = FileBytes(std::string("in memory"));
  EXPECT_EQ("in memory", mapped.view());

  // A FIFO has no size to map: it is read to its end.
  const std::string fifo = dir.path() + "/fifo";
  ASSERT_EQ(0, mkfifo(fifo.c_str(), 0600));
  std::string command = "cat '" + path + "' > '" + fifo + "' &";
  ASSERT_EQ(0, std::system(command.c_str()));
  EXPECT_EQ(bytes, FileBytes::read(fifo.c_str(), "", "").view());
}

// A mapped template cut short under the run ends it with the read error, not a crash.
TEST(FileBytesDeathTest, TruncatedUnderTheRun) {
  TEST_TEMP_DIR dir;
  const std::string path = dir.write("t.ai", std::string(1 << 20, 'x'));
  EXPECT_EXIT(
      {
        FileBytes bytes = FileBytes::read(path.c_str(), "open failed\n", "read failed\n");
        if (truncate(path.c_str(), 0) != 0) std::exit(3);
        volatile char last = bytes.view().back();
        (void)last;
        std::exit(4);
      },
      testing::ExitedWithCode(kFailureStatus), "^read failed\n$");
}

// An endless stream stops at the limit, a missing file names itself and the system's reason.
TEST(FileBytesTest, EndlessStreamsAndMissingFilesEndTheRunWithTheirNames) {
  auto failure = [](const char* path, size_t limit) {
    try {
      read_whole_file(path, "open failed\n", "read failed\n", limit);
    } catch (const Error& error) {
      return std::string(error.what()) + error.reason();
    }
    return std::string("read");
  };
  EXPECT_EQ("/dev/zero: more than 65536 bytes, more than a template or table may hold\n",
            failure("/dev/zero", 65536));
  EXPECT_EQ("open failed\ncannot open /nonexistent/t.csv: No such file or directory",
            failure("/nonexistent/t.csv", 65536));
  EXPECT_EQ("read", failure("/dev/null", 0));
}
