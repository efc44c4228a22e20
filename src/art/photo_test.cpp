#include "art/photo.h"

#include <gtest/gtest.h>
#include <cstdlib>
#include <string>

#include "art/jpeg_reader.h"
#include "art/photo_eps.h"
#include "art/png_reader.h"
#include "art/tiff_reader.h"
#include "support/file_io.h"

namespace {

std::string photo_file(const std::string& name) {
  const std::string path = std::string(ORMEL_TEST_PHOTOS) + "/" + name;
  return read_whole_file(path.c_str(), "open error\n", "read error\n");
}

// The pixels of a binary PPM (P6) after its header of four words.
std::string ppm_pixels(const std::string& ppm, size_t count) {
  return ppm.substr(ppm.size() - count);
}

// The mean difference of two sample strings, in sample values.
double mean_difference(const std::string& a, const std::string& b) {
  double sum = 0;
  for (size_t i = 0; i < a.size(); ++i) {
    sum += std::abs(static_cast<unsigned char>(a[i]) - static_cast<unsigned char>(b[i]));
  }
  return a.empty() ? 0 : sum / static_cast<double>(a.size());
}

}  // namespace

// The lossless photos decode to the scene Ghostscript painted (tests/photos/make.sh), each in
// its colour model; sixteen bits become their high byte, alpha is laid on white (the
// anti-aliased edges of the alpha photo differ from the scene, which has none).
TEST(PhotoTest, ReadersGiveTheScene) {
  const struct {
    const char* file;
    const char* scene;
    int components;
    double dpi;
    double most;  // the mean difference allowed, in sample values
  } cases[] = {
      {"photo.png", "scene.ppm", 3, 96.012, 0},
      {"photo-16bit.png", "scene.ppm", 3, 96.012, 0.5},
      {"photo-palette.png", "scene.ppm", 3, 96.012, 0},
      {"photo-gray.png", "scene-gray.ppm", 1, 96.012, 0},
      {"photo-alpha.png", "scene.ppm", 3, 96.012, 6},
      {"photo.tif", "scene.ppm", 3, 96, 0},
      {"photo-16bit.tif", "scene.ppm", 3, 96, 0.5},
      {"photo-palette.tif", "scene.ppm", 3, 96, 0},
      {"photo-gray.tif", "scene-gray.ppm", 1, 96, 0},
  };
  for (const auto& c : cases) {
    const std::string bytes = photo_file(c.file);
    std::string why;
    const std::optional<RASTER> raster =
        is_png(bytes) ? read_png(bytes, why) : read_tiff(bytes, why);
    ASSERT_TRUE(raster) << c.file << ": " << why;
    EXPECT_EQ(96, raster->width) << c.file;
    EXPECT_EQ(64, raster->height) << c.file;
    EXPECT_EQ(c.components, raster->components) << c.file;
    EXPECT_NEAR(c.dpi, raster->dpi_x, 0.01) << c.file;
    std::string scene = ppm_pixels(photo_file(c.scene), 96 * 64 * 3);
    if (c.components == 1) {
      for (size_t i = 0; i < 96 * 64; ++i) scene[i] = scene[3 * i];
      scene.resize(96 * 64);
    }
    EXPECT_LE(mean_difference(scene, raster->samples), c.most) << c.file;
  }
}

// CMYK stays CMYK: right of its grey ramp (14 pixels wide, painted in black ink) the scene
// was painted in process colours without black, each ink the complement of the colour.
TEST(PhotoTest, CmykTiffKeepsItsInks) {
  std::string why;
  const std::optional<RASTER> raster = read_tiff(photo_file("photo-cmyk.tif"), why);
  ASSERT_TRUE(raster) << why;
  ASSERT_EQ(4, raster->components);
  const std::string rgb = ppm_pixels(photo_file("scene.ppm"), 96 * 64 * 3);
  for (size_t y = 0; y < 64; y += 7) {
    for (size_t x = 14; x < 96; x += 9) {
      const size_t pixel = y * 96 + x;
      for (size_t k = 0; k < 3; ++k) {
        EXPECT_NEAR(255 - static_cast<unsigned char>(rgb[pixel * 3 + k]),
                    static_cast<unsigned char>(raster->samples[pixel * 4 + k]), 2)
            << x << "," << y;
      }
      EXPECT_EQ(0, raster->samples[pixel * 4 + 3]) << x << "," << y;
    }
  }
}

TEST(PhotoTest, JpegHeaders) {
  const struct {
    const char* file;
    int components;
    bool inverted;
    double dpi;  // 0: none
  } cases[] = {
      {"photo.jpg", 3, false, 96},
      {"photo-gray.jpg", 1, false, 96},
      {"photo-cmyk.jpg", 4, true, 0},  // Adobe's inverted CMYK, no JFIF segment
  };
  for (const auto& c : cases) {
    std::string why;
    const std::optional<JPEG_HEADER> header = read_jpeg_header(photo_file(c.file), why);
    ASSERT_TRUE(header) << c.file << ": " << why;
    EXPECT_EQ(96, header->width);
    EXPECT_EQ(64, header->height);
    EXPECT_EQ(c.components, header->components) << c.file;
    EXPECT_EQ(c.inverted, header->inverted) << c.file;
    EXPECT_EQ(c.dpi, header->dpi_x) << c.file;
  }
}

// XResolution and YResolution are RATIONALs at an offset, ResolutionUnit a SHORT in place.
TEST(PhotoTest, ExifResolution) {
  // Little-endian: header, a directory of three entries at 8, the rationals at 50 and 58.
  std::string le("II*\0\x08\0\0\0\x03\0", 10);
  le += std::string("\x1A\x01\x05\0\x01\0\0\0\x32\0\0\0", 12);
  le += std::string("\x1B\x01\x05\0\x01\0\0\0\x3A\0\0\0", 12);
  le += std::string("\x28\x01\x03\0\x01\0\0\0\x03\0\0\0", 12);  // centimetres
  le += std::string("\0\0\0\0", 4);
  le += std::string("\x76\0\0\0\x01\0\0\0\xEC\0\0\0\x02\0\0\0", 16);  // 118/1, 236/2
  double x = 0;
  double y = 0;
  ASSERT_TRUE(exif_resolution(le, x, y));
  EXPECT_NEAR(299.72, x, 1e-9);
  EXPECT_NEAR(299.72, y, 1e-9);
  // The same in big-endian order, in inches.
  std::string be("MM\0*\0\0\0\x08\0\x02", 10);
  be += std::string("\x01\x1A\0\x05\0\0\0\x01\0\0\0\x26", 12);
  be += std::string("\x01\x1B\0\x05\0\0\0\x01\0\0\0\x26", 12);
  be += std::string("\0\0\0\0", 4);
  be += std::string("\0\0\x01\x2C\0\0\0\x01", 8);  // 300/1
  ASSERT_TRUE(exif_resolution(be, x, y));
  EXPECT_EQ(300, x);
  EXPECT_FALSE(exif_resolution(be.substr(0, 20), x, y));  // the rationals cut off
  EXPECT_FALSE(exif_resolution("MM\0*", x, y));
}

TEST(PhotoTest, Ascii85) {
  EXPECT_EQ("9jqo^~>", ascii85("Man "));
  EXPECT_EQ("z!!~>", ascii85(std::string("\0\0\0\0\0", 5)));
  EXPECT_EQ("~>", ascii85(""));
  // A group that would begin a line with "%" gets a blank before it.
  const std::string lines = ascii85(std::string(60, '\x07') + std::string(4, '\x0D'));
  EXPECT_EQ(std::string::npos, lines.find("\n%"));
  EXPECT_NE(std::string::npos, lines.find("\n %"));
}

TEST(PhotoTest, SizeFromResolution) {
  EXPECT_EQ(72, image_points(96, 96));
  EXPECT_EQ(96, image_points(96, 0));  // none given: 72 dpi
  EXPECT_EQ(23.04, image_points(96, 300));
  std::string why;
  EXPECT_FALSE(photo_art("GIF89a", why));
  EXPECT_EQ("not a JPEG, PNG or TIFF file", why);
  EXPECT_STREQ("TIFF", photo_type(std::string("MM\0*", 4)));
}
