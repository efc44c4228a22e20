// Placed art from EPS files: a cell is a colon-separated path below the home folder
// (eps_path), the art's box is the file's high-resolution bounding box (epsf_info), and its
// PostScript is read once a document, however many blocks embed it (eps_embed).
#pragma once

#include <memory>
#include <string>

#include "placed/art_source.h"
#include "placed/eps_embed.h"

class EPS_FILE_SOURCE : public ART_SOURCE {
 public:
  explicit EPS_FILE_SOURCE(std::string home_dir) : home(std::move(home_dir)) {}

  NEW_ART find(std::string_view cell, bool string_body) override;
  std::optional<std::string_view> postscript(const std::string& path) override;
  void next_document() override { files = std::make_unique<EMBEDDED_FILES>(); }

 private:
  std::string home;
  std::unique_ptr<EMBEDDED_FILES> files = std::make_unique<EMBEDDED_FILES>();
};
