// Fuzzes the photo readers: a JPEG's headers, PNG and TIFF decoded, and the EPS written
// from what they read. Bytes that are no usable photo must say why.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "art/photo.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  std::string why;
  const std::optional<PHOTO_ART> art = photo_art(bytes, why);
  if (!art) {
    if (why.empty()) std::abort();
    return 0;
  }
  const std::string_view eps(art->eps);
  if (eps.substr(0, 24) != "%!PS-Adobe-3.0 EPSF-3.0\n" || eps.substr(eps.size() - 6) != "%%EOF\n" ||
      !(art->width > 0) || !(art->height > 0) || art->pixels_wide <= 0 || art->pixels_high <= 0) {
    std::abort();
  }
  return 0;
}
