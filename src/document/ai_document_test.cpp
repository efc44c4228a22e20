#include "document/ai_document.h"

#include <gtest/gtest.h>
#include <string>

#include "document/layer.h"
#include "driver/diagnostics.h"
#include "support/output.h"

namespace {

// The lines joined with "|".
std::string lines_of(const AI_DOCUMENT& doc) {
  std::string joined;
  for (int i = 0; i < doc.line_count(); ++i) joined += std::string(doc.line(i)) + "|";
  return joined;
}

std::string error_of(const std::string& bytes) {
  try {
    AI_DOCUMENT doc(bytes);
    doc.analyze_doc();
  } catch (const Error& error) {
    return error.what();
  }
  return "(no error)";
}

}  // namespace

TEST(DocumentTest, LinesStartAtTheHeaderAndEndAtTheLastEof) {
  AI_DOCUMENT doc("preview\x01\x02%!PS-Adobe a\r\nb\nc\rd\r%%EOF\rafter\r");
  EXPECT_EQ("%!PS-Adobe a|b\nc|d|%%EOF|", lines_of(doc));
  AI_DOCUMENT blank("%!PS\r%!PS-Adobe\r%%EOF \rx\r");
  EXPECT_EQ("%!PS-Adobe|", lines_of(blank));  // "%%EOF " is not a line of the document
  AI_DOCUMENT no_cr("%!PS-Adobe\n%%EOF\n");
  EXPECT_EQ("%!PS-Adobe\n%%EOF\n|", lines_of(no_cr));
  // A NUL ends a line's text; empty lines and lines ending in CR LF keep their length.
  AI_DOCUMENT nul(std::string("%!PS-Adobe\r\r\n\r\nab\0cd\r\n\r%x\0%\r%%EOF\r\n", 35));
  EXPECT_EQ("%!PS-Adobe|||ab||%x|%%EOF|", lines_of(nul));
}

TEST(DocumentTest, EmbeddedDocumentsAreCutOut) {
  AI_DOCUMENT doc(
      "%!PS-Adobe\rA\r%%BeginDocument: x\rinner\r%%EndDocument\r\nB\r"
      "%%BeginDocument\r%%EndDocument\rC%%BeginDocument%%EndDocument\nD\r%%EOF\r");
  EXPECT_EQ("%!PS-Adobe|A|B|C\nD|%%EOF|", lines_of(doc));
}

TEST(DocumentTest, SectionsAndLayers) {
  AI_DOCUMENT doc(
      "%!PS-Adobe\r%%EndComments\r%%BeginProcSet: p\r%%EndProcSet\r%%EndProlog\rgap\r"
      "%%BeginSetup\r%%EndSetup\r%AI5_BeginLayer\r1 To\rTO\r%AI5_EndLayer--\rgap\r"
      "%AI5_BeginLayer\r%AI5_EndLayer--\r%%PageTrailer\r%%Trailer\r%%EOF\r");
  doc.analyze_doc();
  EXPECT_EQ(1, doc.get_prolog()->header.last_line);
  EXPECT_EQ(2, doc.get_prolog()->procset.first_line);
  EXPECT_EQ(3, doc.get_prolog()->procset.last_line);
  EXPECT_EQ(4, doc.get_prolog()->last_line);
  const AI_SCRIPT& script = *doc.get_script();
  EXPECT_EQ(6, script.first_line);
  EXPECT_EQ(17, script.last_line);
  ASSERT_EQ(2, script.layer_count());
  EXPECT_EQ(1, script.layer(0).text_count());
  EXPECT_EQ(13, script.layer(1).first_line);
  EXPECT_EQ(15, script.page_trailer.first_line);
  EXPECT_EQ(15, script.page_trailer.last_line);
  EXPECT_EQ(16, script.doc_trailer.last_line);
  Output out;
  doc.print_new(out);
  EXPECT_EQ(
      "%!PS-Adobe\r%%EndComments\r%%BeginProcSet: p\r%%EndProcSet\r%%EndProlog\r"
      "%%BeginSetup\r%%EndSetup\r%AI5_BeginLayer\r1 To\rTO\r%AI5_EndLayer--\r"
      "%AI5_BeginLayer\r%AI5_EndLayer--\r%%PageTrailer\r%%Trailer\r",
      out.text());
}

// Embedded documents are found by the quick cut, which then leaves the work to the careful
// one; the careful one decides every failure, in the order the cut-out goes first.
TEST(DocumentTest, EmbeddedDocumentsAnywhereAreCutOutFirst) {
  AI_DOCUMENT before("%%BeginDocument%!PS-Adobe\r%%EndDocument\r%!PS-Adobe b\r%%EOF\r");
  EXPECT_EQ("%!PS-Adobe b|%%EOF|", lines_of(before));
  EXPECT_EQ("cannot find %%EndDocument\n", error_of("%!PS-Adobe\r%%EOF\r%%BeginDocument\r"));
  EXPECT_EQ("cannot find %%EndDocument\n", error_of("%%BeginDocument\r"));
  // More lines than a document may have, until the embedded document is cut out.
  std::string bytes = "%!PS-Adobe\r" + std::string(AI_DOCUMENT::kMaxLines - 2, '\r') +
                      "%%BeginDocument\r" + std::string(3000, '\r') + "%%EndDocument\r%%EOF\r";
  EXPECT_EQ(AI_DOCUMENT::kMaxLines, AI_DOCUMENT(bytes).line_count());
}
