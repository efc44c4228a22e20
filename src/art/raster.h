// A decoded image: its samples, 8 bits each, row by row from the top, and its resolution.
#pragma once

#include <string>

struct RASTER {
  int width = 0;
  int height = 0;
  int components = 0;  // 1 gray, 3 RGB, 4 CMYK
  std::string samples;
  double dpi_x = 0;  // 0: the file does not say
  double dpi_y = 0;
};

// More pixels than a photo in print needs (8,192 by 8,192); decoding takes four bytes each.
constexpr long long kMaxPixels = 1LL << 26;
