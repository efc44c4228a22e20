#include "document/ai_document.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

#include "document/layer.h"
#include "driver/diagnostics.h"
#include "support/file_io.h"
#include "support/output.h"
#include "support/test_temp_dir.h"

namespace {

const char kMinimal[] =
    "%!PS-Adobe-3.0\r%%EndComments\r%%EndProlog\r%%BeginSetup\r%%EndSetup\r"
    "%%PageTrailer\r%%Trailer\r%%EOF\r";

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

TEST(StrposTest, SearchesBothWays) {
  const char text[] = "ab%%EOFcd%%EOF";
  EXPECT_EQ(text + 2, strpos(text, 14, "%%EOF", 0));
  EXPECT_EQ(text + 9, strpos(text, 14, "%%EOF", 1));
  EXPECT_EQ(nullptr, strpos(text, 14, "%%EOF", 2));
  EXPECT_EQ(nullptr, strpos(text, 3, "%%EOF", 1));
  EXPECT_EQ(nullptr, strpos(text, 14, "zz", 0));
}

// Offsets past 4 GiB, as in a template that large: in batches, one at a time, and with a line
// longer than 4 GiB.
TEST(LineStartsTest, OffsetsPastFourGiB) {
  const size_t gib4 = size_t{1} << 32;
  const std::vector<size_t> offsets = {0,        10,           gib4 - 1,     gib4,        gib4 + 5,
                                       3 * gib4, 3 * gib4 + 1, 7 * gib4 + 2, 7 * gib4 + 3};
  LineStarts batch;
  batch.reset(2);
  batch.push(offsets.data(), 2);
  batch.push(offsets.data() + 2, offsets.size() - 2);
  LineStarts single;
  single.reset(0);
  for (size_t offset : offsets) single.push(&offset, 1);
  ASSERT_EQ(offsets.size(), batch.size());
  for (size_t i = 0; i < offsets.size(); ++i) {
    EXPECT_EQ(offsets[i], batch[i]) << i;
    EXPECT_EQ(offsets[i], single[i]) << i;
  }
}

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

TEST(DocumentTest, LoadingFailures) {
  EXPECT_EQ("cannot find %!PS-Adobe\n", error_of("%%EOF\r"));
  EXPECT_EQ("cannot find %%EOF\n", error_of("%!PS-Adobe\r"));
  EXPECT_EQ("cannot find %%EndDocument\n", error_of("%!PS-Adobe\r%%BeginDocument\r%%EOF\r"));
  try {
    AI_DOCUMENT::read_file("/nonexistent/template.ai");
    FAIL() << "no error";
  } catch (const Error& error) {
    EXPECT_STREQ("ai file open error\n", error.what());
  }
}

TEST(DocumentTest, LineLimit) {
  std::string exact = "%!PS-Adobe\r";
  for (int i = 2; i < AI_DOCUMENT::kMaxLines; ++i) exact += "\r";
  exact += "%%EOF\r";
  EXPECT_EQ(AI_DOCUMENT::kMaxLines, AI_DOCUMENT(exact).line_count());
  EXPECT_EQ("overflow doc\n", error_of(exact.substr(0, 11) + "\r" + exact.substr(11)));
}

TEST(DocumentTest, MissingSectionComments) {
  EXPECT_EQ("(no error)", error_of(kMinimal));
  EXPECT_EQ("cannot find %%EndProlog\n", error_of("%!PS-Adobe\r%%EndProlog \r%%EOF\r"));
  EXPECT_EQ("cannot find %%BeginSetup\n", error_of("%!PS-Adobe\r%%EndProlog\r%%EOF\r"));
  EXPECT_EQ("cannot find %%EndSetup\n",
            error_of("%!PS-Adobe\r%%EndProlog\r%%BeginSetup\r%%EOF\r%%EndSetup\r"));
  EXPECT_EQ("cannot find %%PageTrailer\n",
            error_of("%!PS-Adobe\r%%EndProlog\r%%BeginSetup\r%%EndSetup\r%%EOF\r"));
  EXPECT_EQ("cannot find %%Trailer\n",
            error_of("%!PS-Adobe\r%%EndProlog\r%%BeginSetup\r%%EndSetup\r%%PageTrailer\r%%EOF\r"));
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

TEST(DocumentTest, EofInsideTheLastLine) {
  AI_DOCUMENT doc(
      "%!PS-Adobe\r%%EndProlog\r%%BeginSetup\r%%EndSetup\r%%PageTrailer\r"
      "%%Trailer\nexec\n%%EOF\r");
  doc.analyze_doc();
  Output out;
  doc.print_new(out);
  EXPECT_EQ("%!PS-Adobe\r%%EndProlog\r%%BeginSetup\r%%EndSetup\r%%PageTrailer\r%%Trailer\nexec\n",
            out.text());
}

namespace {

// Lines as the byte-by-byte definition gives them: from "%!PS-Adobe" through the CR after
// the last "%%EOF", cut at CRs (a LF right after a CR belongs to the line end).
struct ReferenceLine {
  std::string bytes;  // up to the CR
  std::string text() const { return bytes.substr(0, bytes.find('\0')); }
};

std::vector<ReferenceLine> reference_lines(const std::string& bytes) {
  const size_t start = bytes.find("%!PS-Adobe");
  const size_t limit = std::min(bytes.rfind("%%EOF") + 6, bytes.size());
  std::vector<ReferenceLine> lines;
  size_t line_start = start;
  for (size_t i = start; i < limit; ++i) {
    if (bytes[i] != '\r') continue;
    lines.push_back({bytes.substr(line_start, i - line_start)});
    line_start = i + 1 < bytes.size() && bytes[i + 1] == '\n' ? i + 2 : i + 1;
  }
  if (lines.empty()) lines.push_back({bytes.substr(start)});
  return lines;
}

// Random documents from pieces that matter to the cut: line ends, '%', NUL, the starts of
// text objects and placed-art markers, and long runs that cross 64-byte blocks.
std::string random_document(std::mt19937& random) {
  static const std::vector<std::string> pieces = {"a",
                                                  " ",
                                                  "%",
                                                  "\r",
                                                  "\r\n",
                                                  "\n",
                                                  std::string(1, '\0'),
                                                  "0 To",
                                                  "TO",
                                                  "T",
                                                  "%%EOF",
                                                  "%AI5_BeginPlace",
                                                  "%AI5_",
                                                  "%%End",
                                                  std::string(70, 'x'),
                                                  std::string(130, '%')};
  std::string body = "%!PS-Adobe";
  const int count = static_cast<int>(random() % 300);
  for (int i = 0; i < count; ++i) body += pieces[random() % pieces.size()];
  return body + "%%EOF\r" + (random() % 2 ? "tail\r" : "");
}

std::string printed(const AI_DOCUMENT& doc) {
  Output out;
  doc.print_lines(0, doc.line_count() - 1, out);
  return out.text();
}

}  // namespace

TEST(DocumentTest, CutMatchesTheByteByByteDefinition) {
  std::mt19937 random(7);
  for (int round = 0; round < 2000; ++round) {
    const std::string bytes = random_document(random);
    const std::vector<ReferenceLine> expected = reference_lines(bytes);
    AI_DOCUMENT doc(bytes);
    ASSERT_EQ(static_cast<int>(expected.size()), doc.line_count()) << round;
    std::string expected_print;
    for (int i = 0; i < doc.line_count(); ++i) {
      const ReferenceLine& line = expected[static_cast<size_t>(i)];
      const std::string text = line.text();
      ASSERT_EQ(text, doc.line(i)) << round << " line " << i;
      expected_print += text + "\r";
      const bool holds_ai5 = line.bytes.find("%AI5_") != std::string::npos;
      const bool comment =
          holds_ai5 || text.compare(0, 2, "%%") == 0 || text.compare(0, 2, "%A") == 0;
      const bool begins_text =
          text.size() >= 4 && text[0] && text[1] && text.compare(2, 2, "To") == 0;
      const bool ends_text = text.compare(0, 2, "TO") == 0;
      auto any = [](std::string_view) { return true; };
      EXPECT_EQ(comment ? i : -1, doc.find_comment_line(i, i, "", any)) << round;
      EXPECT_EQ(holds_ai5 ? i : -1, doc.find_ai5_line(i, i, any)) << round;
      EXPECT_EQ(begins_text ? i : -1, doc.find_text_line(i, i)) << round;
      EXPECT_EQ(ends_text ? i : -1, doc.find_text_end_line(i, i)) << round;
      if (comment && text.size() >= 2) {
        EXPECT_EQ(i, doc.find_comment_line(i, i, text.substr(0, 4), any)) << round;
      }
    }
    ASSERT_EQ(expected_print, printed(doc)) << round;
  }
}

// A template's own lines go out by reference through a descriptor: the same bytes as in memory.
TEST(DocumentTest, PrintingThroughADescriptorWritesTheSameBytes) {
  TEST_TEMP_DIR dir;
  std::string bytes = "%!PS-Adobe\r";
  for (int i = 0; i < 3000; ++i) {
    bytes += std::string(static_cast<size_t>(i % 97), 'a') + (i % 7 == 0 ? "\r\n" : "\r");
    if (i % 500 == 0) bytes += std::string("nul\0after\r", 10);
  }
  bytes += "%%EOF\r";
  AI_DOCUMENT doc(bytes);
  const std::string path = dir.path() + "/out";
  FILE* file = std::fopen(path.c_str(), "wb");
  ASSERT_NE(nullptr, file);
  Output out(fileno(file));
  doc.print_lines(0, doc.line_count() - 1, out);
  out.flush();
  std::fclose(file);
  const std::string written = read_whole_file(path.c_str(), "open failed\n", "read failed\n");
  EXPECT_EQ(printed(doc), written);
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
