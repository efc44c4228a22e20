#include "support/error.h"

#include <gtest/gtest.h>

static std::string message_of(void (*thrower)()) {
  try {
    thrower();
  } catch (const Error& error) {
    return error.what();
  }
  return "(nothing thrown)";
}

TEST(DiagnosticsTest, ReportersJoinTheirLabels) {
  EXPECT_EQ("TAB_TEXT:TAB_TEXT( char* ):memory allocation error\n",
            message_of([] { memallocerr("TAB_TEXT", "TAB_TEXT( char* )"); }));
  EXPECT_EQ("AI_POINT_TEXT:rimb_encode_tx():\n",
            message_of([] { aborterr("AI_POINT_TEXT", "rimb_encode_tx()", ""); }));
  EXPECT_EQ("cannot find %%EOF\n", message_of([] { fail("cannot find %s\n", "%%EOF"); }));
}
