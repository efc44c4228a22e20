#include "output/ghostscript.h"

#include <gtest/gtest.h>
#include <string>

#include "support/error.h"
#include "support/settings.h"

namespace {

constexpr char kDocument[] = "%!PS-Adobe-3.0\r%%BoundingBox: 0 0 10 10\r%%EOF\r";

// The message of the Error that rendering one document through program ends with.
std::string failure(const char* program) {
  SETTINGS settings;
  settings.form = OUTPUT_FORM::pdf;
  try {
    GHOSTSCRIPT renderer(settings, "/dev/null", program);
    renderer.render(kDocument);
  } catch (const Error& error) {
    return error.what();
  }
  return "rendered";
}

}  // namespace

// A Ghostscript that cannot be found, or that ends without a page, fails the run with what
// it said; neither waits forever.
TEST(GhostscriptTest, MissingOrEndedProgramFails) {
  EXPECT_EQ(failure("ormel-test-no-such-program"),
            "Ghostscript (ormel-test-no-such-program) is not installed: install the Debian "
            "package ghostscript\n");
  EXPECT_EQ(failure("false"), "Ghostscript ended (status 1) before writing its page\n");
}

// Nothing of a name reaches Ghostscript as a page number, a device or a pipe.
TEST(GhostscriptTest, OutputNamesAreFilesAsWritten) {
  EXPECT_EQ(gs_output_name("a/50%/b%d.png"), "./a/50%%/b%%d.png");
  EXPECT_EQ(gs_output_name("|lpr/x.pdf"), "./|lpr/x.pdf");
  EXPECT_EQ(gs_output_name("%stdout"), "./%%stdout");
  EXPECT_EQ(gs_output_name("/tmp/x.pdf"), "/tmp/x.pdf");
}
