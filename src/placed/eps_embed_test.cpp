#include "placed/eps_embed.h"

#include <gtest/gtest.h>
#include <string>

#include "placed/kept_placed_art.h"

namespace {

std::string dos_eps(const std::string& postscript, const std::string& preview) {
  auto le = [](size_t v) {
    std::string bytes;
    for (int i = 0; i < 4; ++i) bytes += static_cast<char>((v >> (8 * i)) & 0xFF);
    return bytes;
  };
  return "\xC5\xD0\xD3\xC6" + le(30) + le(postscript.size()) + le(0) + le(0) +
         le(30 + postscript.size()) + le(preview.size()) + "\xFF\xFF" + postscript + preview;
}

}  // namespace

TEST(EpsEmbedTest, PostScriptFromHeaderThroughTheLastEof) {
  const std::pair<std::string, std::string> cases[] = {
      {"junk%!PS-Adobe-3.0\n%%EOF\n%%EOF\r\nafter", "%!PS-Adobe-3.0\n%%EOF\n%%EOF\r\n"},
      {"%!PS-Adobe-3.0\r%%EOF\x04", "%!PS-Adobe-3.0\r%%EOF"},
      {"%!PS-Adobe-3.0\rno end", "%!PS-Adobe-3.0\rno end"},
      {dos_eps("%!PS-Adobe-3.0 EPSF\r\n%%EOF\r\n", "II*%%EOF"), "%!PS-Adobe-3.0 EPSF\r\n%%EOF\r\n"},
      // A header that points outside the file: the whole file is searched.
      {std::string("\xC5\xD0\xD3\xC6\xFF\xFF\xFF\x7F\x01\x00\x00\x00%!PS-Adobe\r%%EOF", 28),
       "%!PS-Adobe\r%%EOF"},
  };
  for (const auto& [file, postscript] : cases) {
    ASSERT_TRUE(eps_postscript(file).has_value()) << file;
    EXPECT_EQ(postscript, *eps_postscript(file)) << file;
  }
  EXPECT_FALSE(eps_postscript("%!PS only\r%%EOF").has_value());
}

TEST(EpsEmbedTest, PlacementNumbers) {
  const std::pair<double, const char*> cases[] = {
      {0.5, "0.5"}, {212.5, "212.5"}, {100, "100"},          {-0.0000001, "0"},
      {1e-7, "0"},  {-2.25, "-2.25"}, {1.0 / 3, "0.333333"}, {123456789, "123456789"},
  };
  for (const auto& [value, text] : cases) EXPECT_EQ(text, placement_number(value)) << value;
}
