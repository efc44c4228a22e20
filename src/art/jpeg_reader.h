// What passing a JPEG file through as DCT data needs of it, read by libjpeg from its
// headers: the size, the colour components, whether its CMYK is stored inverted (as
// Photoshop writes it, marked by an Adobe segment), and the resolution of its JFIF or EXIF
// segment. The compressed data itself is never decoded.
#pragma once

#include <optional>
#include <string>
#include <string_view>

struct JPEG_HEADER {
  int width = 0;
  int height = 0;
  int components = 0;  // 1 gray, 3 RGB (YCbCr decoded), 4 CMYK (YCCK decoded)
  bool inverted = false;
  double dpi_x = 0;  // 0: the file does not say
  double dpi_y = 0;
};

bool is_jpeg(std::string_view bytes);
// The header of a JPEG file's bytes; nothing, with the reason in why, when it is unusable.
std::optional<JPEG_HEADER> read_jpeg_header(std::string_view bytes, std::string& why);
// The resolution of an EXIF segment's first image directory (its bytes after "Exif\0\0"):
// XResolution and YResolution in ResolutionUnit; false when it says none.
bool exif_resolution(std::string_view tiff, double& dpi_x, double& dpi_y);
