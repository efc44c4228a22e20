// Placed art from files: a cell is a colon-separated path below the home folder
// (eps_path). An EPS file's box is its high-resolution bounding box (epsf_info), and its
// PostScript is read once a document, however many blocks embed it (eps_embed). With
// "-keep", which embeds art, a file may also be a photo (photo_files).
#pragma once

#include <memory>
#include <string>

#include "placed/art_source.h"
#include "placed/eps_embed.h"
#include "placed/photo_files.h"

class EPS_FILE_SOURCE : public ART_SOURCE {
 public:
  // kept: for "-keep", which embeds art: files may be photos, an EPS file may be fitted by
  // its %%BoundingBox, and a file that cannot be used says why (kept_eps_box).
  EPS_FILE_SOURCE(std::string home_dir, bool kept);

  NEW_ART find(std::string_view cell, bool string_body) override;
  std::optional<std::string> path_of(std::string_view cell, bool string_body) const override;
  std::optional<std::string_view> postscript(const std::string& path) override;
  void next_document() override;

 private:
  std::string home;
  std::unique_ptr<EMBEDDED_FILES> files = std::make_unique<EMBEDDED_FILES>();
  std::unique_ptr<PHOTO_FILES> photo_files;  // null without "-keep"
};
