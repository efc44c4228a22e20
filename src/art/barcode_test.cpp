#include "art/barcode.h"

#include <gtest/gtest.h>
#include <string>

namespace {

struct CASE {
  const char* kind;
  const char* data;
  const char* why;  // empty: encoded
};

}  // namespace

// What the library leaves to us: the number of digits, which it pads, and an ITF-14's check
// digit, which it does not take. The library's own reasons are the golden cases'.
TEST(BarcodeTest, DigitsCountedAndChecked) {
  const CASE cases[] = {
      {"ean13", "590123412345", ""},
      {"ean13", "5901234123457", ""},
      {"ean13", "12345678", "8 digits; ean13 takes 12 to 13"},
      {"ean13", "59012341234567", "14 digits; ean13 takes 12 to 13"},
      {"ean8", "9638507", ""},
      {"ean8", "96385074", ""},
      {"ean8", "96385075", "Error 276: Invalid check digit '5', expecting '4'"},
      {"ean8", "963850", "6 digits; ean8 takes 7 to 8"},
      {"upca", "0360002914", "10 digits; upca takes 11 to 12"},
      {"upce", "01234565", ""},
      {"itf14", "1540014128876", ""},
      {"itf14", "15400141288763", ""},
      {"itf14", "15400141288760", "invalid check digit '0', expecting '3'"},
      {"itf14", "00000000000000", ""},
      {"code128", "12345678", ""},
      {"qr", "", "Error 778: No input data (segment 0 empty)"},
  };
  for (const CASE& c : cases) {
    const BARCODE_KIND* kind = barcode_kind(c.kind);
    ASSERT_NE(nullptr, kind) << c.kind;
    std::string why;
    const bool made = encode_barcode(*kind, c.data, why).has_value();
    EXPECT_EQ(std::string(c.why), why) << c.kind << " " << c.data;
    EXPECT_EQ(why.empty(), made) << c.kind << " " << c.data;
  }
}

// The art's box is the symbol with its quiet zones at the kind's module: an EAN-13 is 113
// modules wide (11 + 95 + 7) at 0.33 mm, a QR code of version 1 is 21 modules and 4 on each
// side at 0.5 mm; the EPS says the same in its comments.
TEST(BarcodeTest, ArtSizedByTheModule) {
  const struct {
    const char* kind;
    const char* data;
    double modules_wide;
  } cases[] = {{"ean13", "590123412345", 113}, {"qr", "1", 29}, {"datamatrix", "1", 12}};
  for (const auto& c : cases) {
    const BARCODE_KIND& kind = *barcode_kind(c.kind);
    std::string why;
    const auto art = encode_barcode(kind, c.data, why);
    ASSERT_TRUE(art) << why;
    EXPECT_NEAR(c.modules_wide * kind.module_mm * 72 / 25.4, art->width, 1e-3) << c.kind;
    char box[100];
    std::snprintf(box, sizeof box, "%%%%HiResBoundingBox: 0 0 %.6f %.6f\n", art->width,
                  art->height);
    EXPECT_NE(std::string::npos, art->eps.find(box)) << art->eps.substr(0, 300);
    EXPECT_EQ(0u, art->eps.find("%!PS-Adobe-3.0 EPSF-3.0\n"));
    EXPECT_EQ(art->eps.size() - 6, art->eps.rfind("%%EOF\n"));
  }
}

TEST(BarcodeTest, KindsByName) {
  EXPECT_EQ(nullptr, barcode_kind("EAN13"));
  EXPECT_EQ(nullptr, barcode_kind("ean"));
  EXPECT_EQ("ean13, ean8, upca, upce, code128, gs1-128, itf14, qr, datamatrix",
            barcode_kind_names());
}
