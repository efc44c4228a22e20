#include "template/template.h"

#include <gtest/gtest.h>
#include <string>

#include "support/error.h"

namespace {

// The lines joined with "|", or the message of the failure.
std::string lines_of(const std::string& bytes) {
  try {
    TEMPLATE doc(bytes);
    std::string joined;
    for (int i = 0; i < doc.line_count(); ++i) joined += std::string(doc.line(i)) + "|";
    return joined;
  } catch (const Error& error) {
    return error.what();
  }
}

}  // namespace

// The load- golden cases show embedded documents on lines of their own; these are the places
// they do not: on one line, before the header, after a stray end, unclosed after the last
// %%EOF.
TEST(TemplateTest, EmbeddedDocumentsAreCutOutFirst) {
  const std::pair<std::string, const char*> cases[] = {
      {"%!PS-Adobe\rC%%BeginDocument%%EndDocument\nD\r%%EOF\r", "%!PS-Adobe|C\nD|%%EOF|"},
      {"%%BeginDocument%!PS-Adobe\r%%EndDocument\r%!PS-Adobe b\r%%EOF\r", "%!PS-Adobe b|%%EOF|"},
      {"%!PS-Adobe\r%%EndDocument\rA\r%%BeginDocument\rx\r%%EndDocument\rB\r%%EOF\r",
       "%!PS-Adobe|%%EndDocument|A|B|%%EOF|"},  // an end before any beginning is a line
      {"%!PS-Adobe\r%%EOF\r%%BeginDocument\r", "cannot find %%EndDocument\n"},
      {"%%BeginDocument\r", "cannot find %%EndDocument\n"},
  };
  for (const auto& [bytes, lines] : cases) EXPECT_EQ(lines, lines_of(bytes)) << bytes;
  // More lines than a document may have, until the embedded document is cut out.
  std::string bytes = "%!PS-Adobe\r" + std::string(TEMPLATE::kMaxLines - 2, '\r') +
                      "%%BeginDocument\r" + std::string(3000, '\r') + "%%EndDocument\r%%EOF\r";
  EXPECT_EQ(TEMPLATE::kMaxLines, TEMPLATE(bytes).line_count());
}
