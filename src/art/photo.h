// Photos as EPS art: a JPEG, PNG or TIFF file, known by its first bytes whatever its name,
// becomes an EPS image in its own size (its pixels at its resolution, 72 dpi when it says
// none). A JPEG's compressed data goes in as it is, read by PostScript's DCT filter; PNG
// and TIFF are decoded and their samples written Flate-compressed.
#pragma once

#include <optional>
#include <string>
#include <string_view>

// The image type whose signature the bytes begin with: "JPEG", "PNG", "TIFF"; null for none.
const char* photo_type(std::string_view head);

struct PHOTO_ART {
  std::string eps;
  double width = 0;  // in points; the box is 0 0 width height
  double height = 0;
  int pixels_wide = 0;
  int pixels_high = 0;
};

// The art of a photo file's bytes; nothing, with the reason in why, when it cannot be read.
std::optional<PHOTO_ART> photo_art(std::string_view bytes, std::string& why);
