// A directory of files made for one test and removed with everything in it afterwards.
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>
#include <filesystem>
#include <fstream>
#include <string>

class TEST_TEMP_DIR {
 public:
  TEST_TEMP_DIR() {
    std::string name = (std::filesystem::temp_directory_path() / "ormel-test-XXXXXX").string();
    if (mkdtemp(&name[0])) dir = name;
    EXPECT_FALSE(dir.empty()) << "mkdtemp failed";
  }
  ~TEST_TEMP_DIR() {
    std::error_code ignored;
    if (!dir.empty()) std::filesystem::remove_all(dir, ignored);
  }
  TEST_TEMP_DIR(const TEST_TEMP_DIR&) = delete;
  TEST_TEMP_DIR& operator=(const TEST_TEMP_DIR&) = delete;

  // The directory, without a trailing '/'.
  const std::string& path() const { return dir; }
  // Writes bytes to the file at relative, making its folders first; returns its full path.
  std::string write(const std::string& relative, const std::string& bytes) const {
    const std::filesystem::path file = std::filesystem::path(dir) / relative;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << bytes;
    return file.string();
  }

 private:
  std::string dir;
};
