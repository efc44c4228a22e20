#include "table/string_hazards.h"

#include <gtest/gtest.h>
#include <string>

namespace {

std::string findings(const std::string& cell) {
  std::string joined;
  for (const std::string& finding : string_hazards(cell)) joined += finding + ";";
  return joined;
}

}  // namespace

// report-raw-string-hazards shows each finding alone; these are the cells around them.
TEST(StringHazardsTest, CellsThatWouldBreakTheirString) {
  const struct {
    const char* cell;
    const char* findings;
  } cases[] = {
      {"T-Shirt (XL)", ""},
      {"a (b (c) d) \\( \\) \\\\", ""},  // balanced, or escaped
      {"C:\\new\\temp", ""},             // escapes that change the text, not the string's end
      {"ends\\\\", ""},
      {"last\r", "ends in a carriage return;"},
      {"(\\\r", "\"(\" without \")\" leaves the string open;ends in a carriage return;"},
      {"a\rb", "holds a carriage return;"},
      {"\xEF\xBB\xBFName", "begins with a byte-order mark; -table=tsv reads it;"},
      {"Caf\xC3\xA9", "holds UTF-8, written as its bytes; -table=tsv or -table=csv converts it;"},
      {"Caf\xE9 \xC3(", "\"(\" without \")\" leaves the string open;"},  // one byte a character
  };
  for (const auto& c : cases) EXPECT_EQ(c.findings, findings(c.cell)) << c.cell;
}
