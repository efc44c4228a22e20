#include "support/file_io.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>
#include <string>

#include "driver/diagnostics.h"
#include "support/test_temp_dir.h"

namespace {

std::string error_of(const char* path) {
  try {
    FileBytes::read(path, "open failed\n", "read failed\n");
  } catch (const Error& error) {
    return error.what();
  }
  return "(no error)";
}

}  // namespace

TEST(FileBytesTest, RegularFilesPipesAndMemoryGiveTheSameBytes) {
  TEST_TEMP_DIR dir;
  const std::string bytes("%!PS-Adobe\r\0binary\xff\r%%EOF\r", 24);
  const std::string path = dir.write("t.ai", bytes);
  EXPECT_EQ(bytes, FileBytes::read(path.c_str(), "", "").view());
  EXPECT_EQ("", FileBytes::read(dir.write("empty.ai", "").c_str(), "", "").view());
  EXPECT_EQ(bytes, FileBytes(bytes).view());

  // A FIFO has no size to map: it is read to its end.
  const std::string fifo = dir.path() + "/fifo";
  ASSERT_EQ(0, mkfifo(fifo.c_str(), 0600));
  std::string command = "cat '" + path + "' > '" + fifo + "' &";
  ASSERT_EQ(0, std::system(command.c_str()));
  EXPECT_EQ(bytes, FileBytes::read(fifo.c_str(), "", "").view());
}

TEST(FileBytesTest, MovedBytesStayValid) {
  TEST_TEMP_DIR dir;
  const std::string path = dir.write("t.ai", "mapped text");
  FileBytes first = FileBytes::read(path.c_str(), "", "");
  FileBytes second(std::move(first));
  EXPECT_EQ("mapped text", second.view());
  first = std::move(second);
  EXPECT_EQ("mapped text", first.view());
  first = FileBytes(std::string("in memory"));
  EXPECT_EQ("in memory", first.view());
}

TEST(FileBytesTest, Failures) {
  TEST_TEMP_DIR dir;
  EXPECT_EQ("open failed\n", error_of("/nonexistent/t.ai"));
  EXPECT_EQ("read failed\n", error_of(dir.path().c_str()));  // a directory opens, but reads fail
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
