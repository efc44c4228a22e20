#include "table/tab_text.h"

#include <gtest/gtest.h>
#include <string>

#include "driver/diagnostics.h"

namespace {

TAB_TEXT table(const std::string& bytes) {
  TAB_TEXT tab;
  tab.init_from_bytes(bytes);
  return tab;
}

std::string error_of(const std::string& bytes) {
  try {
    table(bytes);
  } catch (const Error& error) {
    return error.what();
  }
  return "(no error)";
}

std::string lines(int count, bool final_line_feed) {
  std::string text;
  for (int i = 0; i < count; ++i) text += "r" + std::to_string(i) + (i + 1 < count ? "\n" : "");
  return final_line_feed ? text + "\n" : text;
}

}  // namespace

TEST(TabTextTest, RecordsAndFields) {
  TAB_TEXT tab = table("a\t\tb\n\nlast\r\n");
  EXPECT_EQ(3, tab.rec_count());
  EXPECT_STREQ("a", tab.get_field(0, 0));
  EXPECT_STREQ("", tab.get_field(0, 1));
  EXPECT_STREQ("b", tab.get_field(0, 2));
  EXPECT_EQ(nullptr, tab.get_field(0, 3));
  EXPECT_STREQ("", tab.get_field(1, 0));        // an empty line is a record of one empty field
  EXPECT_STREQ("last\r", tab.get_field(2, 0));  // a CR before the line feed stays
  EXPECT_EQ(nullptr, tab.get_field(-1, 0));
  EXPECT_EQ(nullptr, tab.get_field(3, 0));
  EXPECT_EQ(nullptr, tab.get_field(0, -1));
}

TEST(TabTextTest, EmptyFilesAndLoneLineFeeds) {
  TAB_TEXT empty = table("");
  EXPECT_EQ(0, empty.rec_count());
  EXPECT_EQ(nullptr, empty.get_field(0, 0));
  TAB_TEXT line_feed = table("\n");
  EXPECT_EQ(1, line_feed.rec_count());
  EXPECT_STREQ("", line_feed.get_field(0, 0));
  EXPECT_EQ(nullptr, line_feed.get_field(0, 1));
}

TEST(TabTextTest, RecordLimit) {
  EXPECT_EQ(1024, table(lines(1024, true)).rec_count());
  EXPECT_EQ(1024, table(lines(1024, false)).rec_count());
  EXPECT_EQ("overflow rec\n", error_of(lines(1025, false)));
}

TEST(TabTextTest, ReinitialisingForgetsTheEarlierFile) {
  TAB_TEXT tab;
  tab.init_from_bytes("a\nb\nc\n");
  tab.init_from_bytes("x\n");
  EXPECT_EQ(1, tab.rec_count());
  EXPECT_STREQ("x", tab.get_field(0, 0));
  EXPECT_EQ(nullptr, tab.get_field(1, 0));
}

TEST(TabTextTest, FileErrors) {
  TAB_TEXT tab;
  try {
    tab.init("/nonexistent/table.txt");
    FAIL() << "no error";
  } catch (const Error& error) {
    EXPECT_STREQ("tab text file open error\n", error.what());
  }
  try {
    tab.init("/");
    FAIL() << "no error";
  } catch (const Error& error) {
    EXPECT_STREQ("tab text file read error\n", error.what());
  }
}
