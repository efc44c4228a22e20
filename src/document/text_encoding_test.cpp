#include "document/text_encoding.h"

#include <gtest/gtest.h>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "document/ai_document.h"
#include "text/point_text_reader.h"

namespace {

const char* encoding_of_setup(const std::string& setup_lines) {
  AI_DOCUMENT doc(std::make_unique<TEMPLATE>("%!PS-Adobe-3.0\r%%EndProlog\r%%BeginSetup\r" +
                                             setup_lines +
                                             "%%EndSetup\r%%PageTrailer\r%%Trailer\r%%EOF\r"));
  POINT_TEXT_READER reader;
  doc.analyze_doc(reader);
  return template_text_encoding(doc);
}

}  // namespace

// The golden cases hold the whole Mac and Windows vectors (128/Adieresis, 128/Euro).
TEST(TextEncodingTest, TheFontVectorTells) {
  const struct {
    const char* setup;
    const char* encoding;
  } cases[] = {
      {"[\r39/quotesingle 96/grave 130/quotesinglbase/florin\rTE\r", "WINDOWS-1252"},
      {"[\r39/quotesingle 96/grave 161/exclamdown\rTE\r", "MACINTOSH"},  // neither: the default
      {"", "MACINTOSH"},
      {"%39/quotesingle 96/grave 128/Euro\r", "MACINTOSH"},  // only at the start of a line
  };
  for (const auto& c : cases) EXPECT_STREQ(c.encoding, encoding_of_setup(c.setup)) << c.setup;
}

// Illustrator files saved on Windows, as found.
TEST(TextEncodingTest, WindowsFilesOfTheSharedCorpus) {
  const char* corpus = std::getenv("ORMEL_SHARED_CORPUS");
  if (!corpus || !std::filesystem::is_directory(corpus)) GTEST_SKIP() << "no shared corpus";
  for (const char* name : {"aspose-ai_one_text_3_ai32.ai", "ldp-linux-faq-small_ai4win.eps"}) {
    const std::string path = std::string(corpus) + "/" + name;
    AI_DOCUMENT doc(std::make_unique<TEMPLATE>(TEMPLATE::read_file(path.c_str())));
    POINT_TEXT_READER reader;
    doc.analyze_doc(reader);
    EXPECT_STREQ("WINDOWS-1252", template_text_encoding(doc)) << name;
  }
}
