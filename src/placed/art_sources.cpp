#include "placed/art_sources.h"

#include "placed/barcode_source.h"
#include "placed/eps_file_source.h"
#include "support/error.h"
#include "support/settings.h"

ART_SOURCES::ART_SOURCES(const SETTINGS& settings)
    : files(std::make_unique<EPS_FILE_SOURCE>(settings.home_dir, settings.keep)) {
  for (const auto& [id, kind_name] : settings.barcodes) {
    const BARCODE_KIND* kind = barcode_kind(kind_name);
    // The options let only known kinds through.
    if (!kind) fail("unknown barcode kind %s\n", kind_name.c_str());
    barcodes.emplace_back(id, std::make_unique<BARCODE_SOURCE>(*kind));
  }
}

ART_SOURCE& ART_SOURCES::for_id(std::string_view id) {
  for (auto& [barcode_id, source] : barcodes) {
    if (barcode_id == id) return *source;
  }
  return *files;
}

void ART_SOURCES::next_document() {
  files->next_document();
  for (auto& barcode : barcodes) barcode.second->next_document();
}
