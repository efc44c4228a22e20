// The sources of a run's placed art, one for each way a cell can name art: files below the
// home folder for every identifier, unless "-barcode=" makes the identifier's cells the
// data of barcodes of a kind.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "placed/art_source.h"

struct SETTINGS;

class ART_SOURCES {
 public:
  explicit ART_SOURCES(const SETTINGS& settings);

  // The source of the art that placeholders of id name.
  ART_SOURCE& for_id(std::string_view id);
  // A document is written: each source may let go of what it read for it.
  void next_document();

 private:
  std::unique_ptr<ART_SOURCE> files;
  std::vector<std::pair<std::string, std::unique_ptr<ART_SOURCE>>> barcodes;
};
