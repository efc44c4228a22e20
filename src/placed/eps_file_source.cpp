#include "placed/eps_file_source.h"

#include "placed/eps_path.h"
#include "placed/kept_eps_box.h"

EPS_FILE_SOURCE::EPS_FILE_SOURCE(std::string home_dir, bool kept)
    : home(std::move(home_dir)), photo_files(kept ? std::make_unique<PHOTO_FILES>() : nullptr) {}

std::optional<std::string> EPS_FILE_SOURCE::path_of(std::string_view cell, bool string_body) const {
  return local_eps_path(cell, home, string_body);
}

NEW_ART EPS_FILE_SOURCE::find(std::string_view cell, bool string_body) {
  NEW_ART art;
  art.path = path_of(cell, string_body);
  if (!art.path) return art;
  if (photo_files) {
    if (std::optional<NEW_ART> photo = photo_files->find(*art.path)) return std::move(*photo);
    art.box = kept_eps_box(*art.path, art.unusable);
    return art;
  }
  EPSF_INFO info(*art.path);
  if (info.analyze() == 0) art.box = info.get_HiResBoundingBox();
  return art;
}

std::optional<std::string_view> EPS_FILE_SOURCE::postscript(const std::string& path) {
  if (photo_files) {
    if (std::optional<std::string_view> photo = photo_files->postscript(path)) return photo;
  }
  return files->postscript(path);
}

void EPS_FILE_SOURCE::next_document() {
  files = std::make_unique<EMBEDDED_FILES>();
  if (photo_files) photo_files->next_document();
}
