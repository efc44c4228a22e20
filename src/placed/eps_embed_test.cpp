#include "placed/eps_embed.h"

#include <gtest/gtest.h>
#include <string>

#include "placed/kept_placed_art.h"

// keep-placed-swap-embedded embeds from a file with a DOS EPS header; these are the other
// forms of file.
TEST(EpsEmbedTest, PostScriptFromHeaderThroughTheLastEof) {
  const std::pair<std::string, std::string> cases[] = {
      {"junk%!PS-Adobe-3.0\n%%EOF\n%%EOF\r\nafter", "%!PS-Adobe-3.0\n%%EOF\n%%EOF\r\n"},
      {"%!PS-Adobe-3.0\r%%EOF\x04", "%!PS-Adobe-3.0\r%%EOF"},
      {"%!PS-Adobe-3.0\n%%EOF\r\x04", "%!PS-Adobe-3.0\n%%EOF\r"},
      {"%!PS-Adobe-3.0\rno end", "%!PS-Adobe-3.0\rno end"},
      // A header whose section starts or ends outside the file: the whole file is searched.
      {std::string("\xC5\xD0\xD3\xC6\xFF\xFF\xFF\x7F\x01\x00\x00\x00%!PS-Adobe\r%%EOF", 28),
       "%!PS-Adobe\r%%EOF"},
      {std::string("\xC5\xD0\xD3\xC6\x1C\x00\x00\x00\xFF\xFF\xFF\x7F%!PS-Adobe\r%%EOF", 28),
       "%!PS-Adobe\r%%EOF"},
      {"%!PS only\r%%EOF", "(none)"},
  };
  for (const auto& [file, postscript] : cases) {
    EXPECT_EQ(postscript, eps_postscript(file).value_or("(none)")) << file;
  }
}

TEST(EpsEmbedTest, PlacementNumbers) {
  const std::pair<double, const char*> cases[] = {
      {0.5, "0.5"}, {212.5, "212.5"}, {100, "100"},          {-0.0000001, "0"},
      {1e-7, "0"},  {-2.25, "-2.25"}, {1.0 / 3, "0.333333"}, {123456789, "123456789"},
  };
  for (const auto& [value, text] : cases) EXPECT_EQ(text, placement_number(value)) << value;
}
