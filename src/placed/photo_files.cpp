#include "placed/photo_files.h"

#include "art/photo.h"
#include "placed/art_file.h"
#include "support/error.h"

namespace {

constexpr size_t kSignatureBytes = 8;

// Whether the file's first bytes are a photo's; a file that cannot be read is none.
bool is_photo_file(const std::string& path) {
  std::string why;
  const std::optional<std::string> head = read_art_file(path, kSignatureBytes, why);
  return head && photo_type(*head);
}

}  // namespace

std::optional<NEW_ART> PHOTO_FILES::find(const std::string& path) {
  const CACHED_ART* art = cache.find(path);
  if (!art) {
    if (!is_photo_file(path)) return std::nullopt;
    art = art_of(path);
  }
  NEW_ART found;
  found.path = path;
  found.pixels_wide = art->pixels_wide;
  found.pixels_high = art->pixels_high;
  // A photo that cannot be read has no art to embed where the block linked its art.
  found.generated = art->unusable.empty();
  if (art->unusable.empty()) {
    found.box = art->box;
  } else {
    found.unusable = art->unusable;
  }
  return found;
}

std::optional<std::string_view> PHOTO_FILES::postscript(const std::string& path) {
  const CACHED_ART* art = cache.find(path);
  if (!art) {
    if (!is_photo_file(path)) return std::nullopt;
    art = art_of(path);
  }
  if (!art->unusable.empty()) return std::nullopt;
  return std::string_view(art->postscript);
}

// A photo that cannot be read is remembered with its reason, so it is not read again.
const CACHED_ART* PHOTO_FILES::art_of(const std::string& path) {
  CACHED_ART art;
  std::string why;
  bool too_large = false;
  const std::optional<std::string> bytes = read_art_file(path, kMaxBytes, why, &too_large);
  if (too_large) fail("photo too large: %s\n", path.c_str());
  std::optional<PHOTO_ART> photo = bytes ? photo_art(*bytes, why) : std::nullopt;
  if (photo) {
    art.postscript = std::move(photo->eps);
    art.box = EPS_BBOX{0, 0, photo->width, photo->height};
    art.pixels_wide = photo->pixels_wide;
    art.pixels_high = photo->pixels_high;
  } else {
    const char* type = bytes ? photo_type(*bytes) : nullptr;
    art.unusable = std::string("unusable ") + (type ? type : "photo") + " " + path + ": " + why;
  }
  return &cache.add(path, std::move(art));
}
