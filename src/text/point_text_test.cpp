#include "text/point_text.h"

#include <gtest/gtest.h>
#include <string>

#include "support/error.h"
#include "support/report.h"
#include "support/settings.h"
#include "support/stack.h"
#include "table/tab_text.h"

namespace {

// Fills point texts of one run "(TX-1-1) Tx" in turn from one table, the expansion pool
// holding its least: the last text's string, or the message of the failure.
std::string fill(int texts, const std::string& cells) {
  const SETTINGS settings;
  REPORT report;
  EXPANSION_BUDGET budget;
  budget.reset(0);
  std::string joined;
  std::string room;
  TEXT_REPLACING with{settings, report, budget, joined, room};
  TAB_TEXT table;
  table.init_from_bytes(cells);
  std::string last;
  try {
    for (int i = 0; i < texts; ++i) {
      AI_POINT_TEXT text;
      STACK stack;
      stack.push("(TX-1-1)");
      stack.push("Tx");
      text.setup(TEXT_OP::Tx, stack);
      text.setup_tabtxt("TX", table, with);
      text.TxTXstring("", last);
    }
  } catch (const Error& error) {
    return error.what();
  }
  return last;
}

std::string repeated(const std::string& text, int times) {
  std::string out;
  for (int i = 0; i < times; ++i) out += text;
  return out;
}

}  // namespace

// Cells that bring placeholders back: the golden cases stop one text that grows; these are
// the other bounds, reached at sizes a golden case could not hold.
TEST(PointTextTest, ExpansionIsBounded) {
  EXPECT_EQ("<end>", fill(1, "<TX-1-2>\tend\n"));
  // Texts that each grow within bounds draw on one pool for the whole run.
  const std::string growing = repeated("TX-1-2 ", 10) + "\t" + std::string(60000, 'x') + "\n";
  EXPECT_EQ(10u * 60001u, fill(1, growing).size());
  EXPECT_EQ("endless expansion of placeholder TX-1-2\n", fill(2, growing));
  // Placeholders kept for want of a cell are met again each time the walk starts over: 58
  // a pass, 412 bytes more a pass, so the 100,000th comes long before 1 MiB is used.
  EXPECT_EQ("endless expansion of placeholder TX-9-9\n",
            fill(1, repeated("TX-9-9 ", 58) + "TX-1-1\n"));
}
