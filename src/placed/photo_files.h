// Photos among the files that placed-art cells name (for "-keep"): a file whose first bytes
// are a JPEG's, a PNG's or a TIFF's signature is read whole and becomes EPS art (art/photo),
// once a run while the cache holds it, whichever documents of a batch show it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "placed/art_cache.h"
#include "placed/art_source.h"

class PHOTO_FILES {
 public:
  // A photo larger than this ends the run with "photo too large: PATH".
  static constexpr size_t kMaxBytes = size_t{256} << 20;

  // The art of the file at path when it is a photo, its box missing and the reason given
  // when it cannot be read as one; nothing when the file is no photo (or is not there).
  std::optional<NEW_ART> find(const std::string& path);
  // The PostScript of the photo that find() read at path.
  std::optional<std::string_view> postscript(const std::string& path);
  void next_document() { cache.next_document(); }

 private:
  const CACHED_ART* art_of(const std::string& path);

  // A few photos of some megabytes each; one used by every document stays.
  ART_CACHE cache{64, size_t{128} << 20};
};
