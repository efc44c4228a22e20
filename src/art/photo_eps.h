// The EPS of an image: its header, an image dictionary whose data follows in ASCII85, read
// through the filter that decodes it, and its end.
#pragma once

#include <string>
#include <string_view>

struct IMAGE_FORM {
  int width = 0;  // in pixels
  int height = 0;
  int components = 0;  // 1 gray, 3 RGB, 4 CMYK
  double dpi_x = 0;    // 0: 72 dpi
  double dpi_y = 0;
  bool inverted = false;    // samples stored as 255 minus the value (Adobe's CMYK JPEGs)
  const char* filter = "";  // "DCTDecode" or "FlateDecode"
};

// The size in points of an image of that form.
double image_points(int pixels, double dpi);
// The EPS of data, the image's samples as the filter encodes them.
std::string image_eps(const IMAGE_FORM& form, std::string_view data);
// The bytes in ASCII85, ended by "~>", in lines none of which begins with "%".
std::string ascii85(std::string_view bytes);
// The bytes compressed as zlib's deflate, as PostScript's Flate filter reads them.
std::string deflate(std::string_view bytes);
