#include "template/lines.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

#include "support/error.h"
#include "support/output.h"

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

namespace {

// Lines as the byte-by-byte definition gives them, each up to its CR: from "%!PS-Adobe"
// through the CR after the last "%%EOF", cut at CRs (a LF right after a CR belongs to the
// line end).
std::vector<std::string> reference_lines(const std::string& bytes) {
  const size_t start = bytes.find("%!PS-Adobe");
  const size_t limit = std::min(bytes.rfind("%%EOF") + 6, bytes.size());
  std::vector<std::string> lines;
  size_t line_start = start;
  for (size_t i = start; i < limit; ++i) {
    if (bytes[i] != '\r') continue;
    lines.push_back(bytes.substr(line_start, i - line_start));
    line_start = i + 1 < bytes.size() && bytes[i + 1] == '\n' ? i + 2 : i + 1;
  }
  if (lines.empty()) lines.push_back(bytes.substr(start));
  return lines;
}

// Random documents from pieces that matter to the cut: line ends, '%', NUL, the starts of
// text objects and placed-art markers, and long runs that cross 64-byte blocks. Plain ones
// hold mostly short lines, as most of a large template: only their line ends matter, and the
// letters of "To" and "TO" apart.
std::string random_document(std::mt19937& random, bool plain) {
  static const std::vector<std::string> plain_pieces = {"a",    "a",  " ", "\r", "\r", "\r",
                                                        "\r\n", "\n", "T", "o",  "O"};
  static const std::vector<std::string> all_pieces = [] {
    std::vector<std::string> list = {
        "a",     " ",    "%", "\r", "\r\n", "\n", "0 To", "TO", "T", "%%EOF", "%AI5_BeginPlace",
        "%AI5_", "%%End"};
    for (const std::string& more :
         {std::string(1, '\0'), std::string(70, 'x'), std::string(130, '%')})
      list.push_back(more);
    return list;
  }();
  const std::vector<std::string>& pieces = plain ? plain_pieces : all_pieces;
  std::string body = "%!PS-Adobe";
  const int count = static_cast<int>(random() % 600);
  for (int i = 0; i < count; ++i) body += pieces[random() % pieces.size()];
  return body + "%%EOF\r" + (random() % 2 ? "tail\r" : "");
}

}  // namespace

TEST(LinesTest, CutMatchesTheByteByByteDefinition) {
  std::mt19937 random(7);
  for (int round = 0; round < 2000; ++round) {
    const std::string bytes = random_document(random, round % 2 == 1);
    const std::vector<std::string> expected = reference_lines(bytes);
    LINE_INDEX doc;
    doc.cut_at_crs(bytes, false);
    ASSERT_EQ(static_cast<int>(expected.size()), doc.line_count()) << round;
    std::string expected_print;
    std::vector<int> text_starts;  // how many lines before each begin a text object
    for (int i = 0; i < doc.line_count(); ++i) {
      const std::string& line = expected[static_cast<size_t>(i)];
      const std::string text = line.substr(0, line.find('\0'));  // a NUL ends the text
      ASSERT_EQ(text, doc.line(i)) << round << " line " << i;
      expected_print += text + "\r";
      const bool holds_ai5 = line.find("%AI5_") != std::string::npos;
      const bool comment =
          holds_ai5 || text.compare(0, 2, "%%") == 0 || text.compare(0, 2, "%A") == 0;
      const bool begins_text =
          text.size() >= 4 && text[0] && text[1] && text.compare(2, 2, "To") == 0;
      const bool ends_text = text.compare(0, 2, "TO") == 0;
      text_starts.push_back((text_starts.empty() ? 0 : text_starts.back()) + (begins_text ? 1 : 0));
      auto any = [](std::string_view) { return true; };
      EXPECT_EQ(comment ? i : -1, doc.find_comment_line(i, i, "", any)) << round;
      EXPECT_EQ(holds_ai5 ? i : -1, doc.find_ai5_line(i, i, any)) << round;
      EXPECT_EQ(begins_text ? i : -1, doc.find_text_line(i, i)) << round;
      EXPECT_EQ(ends_text ? i : -1, doc.find_text_end_line(i, i)) << round;
      if (comment && text.size() >= 2) {
        EXPECT_EQ(i, doc.find_comment_line(i, i, text.substr(0, 4), any)) << round;
      }
    }
    Output out;
    doc.print_lines(0, doc.line_count() - 1, out);
    ASSERT_EQ(expected_print, out.text()) << round;
    const int low = static_cast<int>(random() % expected.size());
    const int high =
        low + static_cast<int>(random() % (expected.size() - static_cast<size_t>(low)));
    const int before_low = low > 0 ? text_starts[static_cast<size_t>(low) - 1] : 0;
    EXPECT_EQ(static_cast<size_t>(text_starts[static_cast<size_t>(high)] - before_low),
              doc.text_line_count(low, high))
        << round;
    // Lines looked up in any order, alone or as ranges with their line ends, are those of
    // the definition: the index keeps only some line starts and finds the others.
    std::vector<size_t> line_ends(expected.size() + 1, 0);
    for (size_t i = 0, at = bytes.find("%!PS-Adobe"); i < expected.size(); ++i) {
      at += expected[i].size();
      if (at < bytes.size() && bytes[at] == '\r') ++at;
      if (at < bytes.size() && bytes[at] == '\n' && bytes[at - 1] == '\r') ++at;
      line_ends[i + 1] = at;
    }
    line_ends[0] = bytes.find("%!PS-Adobe");
    for (int lookup = 0; lookup < 20; ++lookup) {
      const int a = static_cast<int>(random() % expected.size());
      const int b = static_cast<int>(random() % expected.size());
      const std::string& line = expected[static_cast<size_t>(a)];
      ASSERT_EQ(line.substr(0, line.find('\0')), doc.line(a)) << round << " line " << a;
      const auto [first, last] = std::minmax(a, b);
      const size_t from = line_ends[static_cast<size_t>(first)];
      ASSERT_EQ(bytes.substr(from, line_ends[static_cast<size_t>(last) + 1] - from),
                doc.bytes_of_lines(first, last))
          << round << " lines " << first << ".." << last;
    }
    // A walk over a range of lines gives each as line() does.
    const int first = static_cast<int>(random() % static_cast<unsigned>(doc.line_count()));
    int next = first;
    doc.each_line(first, doc.line_count() - 1, [&](std::string_view text) {
      EXPECT_EQ(doc.line(next), text) << round << " line " << next;
      ++next;
    });
    EXPECT_EQ(doc.line_count(), next) << round;
  }
}

// One CR LF among short lines, at each place in a 64-byte block: lines that end in CR LF are
// printed with a CR alone, wherever the cut meets them.
TEST(LinesTest, OneCrLfAnywhereInABlock) {
  std::string lines;
  for (int i = 0; i < 60; ++i) lines += "ab\r";
  for (size_t shift = 0; shift < 64; ++shift) {
    const std::string bytes =
        "%!PS-Adobe\r" + std::string(shift, 'x') + lines + "cd\r\n" + lines + "%%EOF\r";
    LINE_INDEX doc;
    doc.cut_at_crs(bytes, false);
    ASSERT_EQ(123, doc.line_count()) << shift;
    EXPECT_EQ("cd", doc.line(61)) << shift;
    Output out;
    doc.print_lines(0, doc.line_count() - 1, out);
    std::string expected = bytes;
    expected.erase(expected.find('\n'), 1);
    EXPECT_EQ(expected, out.text()) << shift;
  }
}

namespace {

// The lines of a cut for -keep, joined with "|": each with its line end shown as <CR>, <LF>
// or <CRLF>, and a '*' before the lines the structure searches see; or the failure's message.
std::string kept_dump(const std::string& bytes) {
  LINE_INDEX index;
  try {
    index.cut_kept(bytes);
  } catch (const Error& error) {
    return error.what();
  }
  auto any = [](std::string_view) { return true; };
  std::string dump;
  for (int i = 0; i < index.line_count(); ++i) {
    const std::string_view text = index.line(i);
    const std::string_view with_end = index.bytes_of_lines(i, i);
    const std::string_view end = with_end.substr(text.size());
    const bool seen = index.find_comment_line(i, i, "", any) == i ||
                      index.find_text_line(i, i) == i || index.find_text_end_line(i, i) == i;
    dump += std::string(seen ? "*" : "") + std::string(text) +
            (end == "\r\n" ? "<CRLF>"
             : end == "\r" ? "<CR>"
             : end == "\n" ? "<LF>"
                           : "") +
            "|";
  }
  return dump;
}

}  // namespace

// Only the comments that open and close an opaque block are seen: documents nest, and
// counted data is passed over by its count, or up to its end comment when the count is wrong.
TEST(LinesTest, KeptCutHidesWhatOpaqueBlocksHold) {
  const struct {
    const char* bytes;
    const char* dump;
  } cases[] = {
      {"%!PS-Adobe\n%%BeginDocument: a\n%%BeginDocument: b\n0 To\n%%EndDocument\n%%EOF\n"
       "%%EndDocument\n%%EOF\n",
       "%!PS-Adobe<LF>|*%%BeginDocument: a<LF>|%%BeginDocument: b<LF>|0 To<LF>|%%EndDocument<LF>|"
       "%%EOF<LF>|*%%EndDocument<LF>|*%%EOF<LF>|"},
      {"%!PS-Adobe\r%%BeginData: 14 Binary Bytes\rXI\r%%EndData\rTO\r%%EndData\r%%EOF\r",
       "%!PS-Adobe<CR>|*%%BeginData: 14 Binary Bytes<CR>|XI<CR>|%%EndData<CR>|TO<CR>|"
       "*%%EndData<CR>|*%%EOF<CR>|"},
      {"%!PS-Adobe\r%%BeginData: 2 ASCII Lines\r%%EndData\rTO\r%%EndData\r%%EOF\r",
       "%!PS-Adobe<CR>|*%%BeginData: 2 ASCII Lines<CR>|%%EndData<CR>|TO<CR>|*%%EndData<CR>|"
       "*%%EOF<CR>|"},
      // A count too large or missing: the first end comment after the data's start.
      {"%!PS-Adobe\r%%BeginBinary: 999\r0 To\r%%EndBinary\rTO\r%%EOF\r",
       "%!PS-Adobe<CR>|*%%BeginBinary: 999<CR>|0 To<CR>|*%%EndBinary<CR>|*TO<CR>|*%%EOF<CR>|"},
      {"%!PS-Adobe\r%%BeginFont: F\r%%EndSetup\r%%EndFont\r%%EOF\r",
       "%!PS-Adobe<CR>|*%%BeginFont: F<CR>|%%EndSetup<CR>|*%%EndFont<CR>|*%%EOF<CR>|"},
      // Without its end a data block hides nothing.
      {"%!PS-Adobe\r%%BeginData: 3\rTO\r%%EOF\r",
       "%!PS-Adobe<CR>|*%%BeginData: 3<CR>|*TO<CR>|*%%EOF<CR>|"},
      // Documents nest, so each needs its own end; the failures in their order.
      {"%!PS-Adobe\r%%BeginDocument\r%%BeginDocument\r%%EndDocument\r%%EOF\r",
       "cannot find %%EndDocument\n"},
      {"%%EOF\r%!PS-Adobe\r", "cannot find %%EOF\n"},
      {"%!PS\r%%EOF\r", "cannot find %!PS-Adobe\n"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.dump, kept_dump(c.bytes)) << c.bytes;
}

// A kept cut counts its lines on its own: the limit at its exact value and one past it.
TEST(LinesTest, KeptCutLineLimit) {
  std::string many = "%!PS-Adobe\n" + std::string(LINE_INDEX::kMaxLines - 2, '\n') + "%%EOF";
  LINE_INDEX exact;
  exact.cut_kept(many);
  EXPECT_EQ(LINE_INDEX::kMaxLines, exact.line_count());
  EXPECT_EQ("overflow doc\n", kept_dump(many.substr(0, 11) + "x\n" + many.substr(11)));
}
