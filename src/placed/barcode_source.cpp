#include "placed/barcode_source.h"

#include "support/escapes.h"

namespace {

// The data as a message shows it: escaped, and cut after some bytes, with its length.
std::string shown(const std::string& data) {
  constexpr size_t kShown = 40;
  if (data.size() <= kShown) return "\"" + tx_encode(data) + "\"";
  return "\"" + tx_encode(data.substr(0, kShown)) + "...\" (" + std::to_string(data.size()) +
         " bytes)";
}

}  // namespace

NEW_ART BARCODE_SOURCE::find(std::string_view cell, bool string_body) {
  NEW_ART art;
  art.generated = true;
  // The data is read as a file name would be: escapes stand for the bytes they spell.
  std::string data = string_body ? ps_string_decode(cell) : path_decode(cell);
  std::string why;
  const CACHED_ART* found = art_of(data, why);
  if (!found) {
    art.refused = std::string(kind.name) + " " + shown(data) + ": " + why;
    return art;
  }
  art.box = found->box;
  art.path = std::move(data);
  art.module_mm = kind.module_mm;
  art.smallest_module_mm = kind.smallest_mm;
  return art;
}

std::optional<std::string_view> BARCODE_SOURCE::postscript(const std::string& data) {
  std::string why;
  const CACHED_ART* found = art_of(data, why);
  if (!found) return std::nullopt;
  return std::string_view(found->postscript);
}

const CACHED_ART* BARCODE_SOURCE::art_of(const std::string& data, std::string& why) {
  if (const CACHED_ART* found = cache.find(data)) return found;
  std::optional<BARCODE_ART> made = encode_barcode(kind, data, why);
  if (!made) return nullptr;
  CACHED_ART art;
  art.postscript = std::move(made->eps);
  art.box = EPS_BBOX{0, 0, made->width, made->height};
  return &cache.add(data, std::move(art));
}
