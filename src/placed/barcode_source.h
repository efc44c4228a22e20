// Placed art from barcodes: the cells of an identifier that "-barcode=ID:KIND" names are
// the data of barcodes of that kind, drawn as EPS art (art/barcode). Each data is encoded
// once a run while the cache holds it.
#pragma once

#include "art/barcode.h"
#include "placed/art_cache.h"
#include "placed/art_source.h"

class BARCODE_SOURCE : public ART_SOURCE {
 public:
  // A batch rarely shows one data twice; a few hundred symbols of a few kilobytes each.
  static constexpr size_t kCachedSymbols = 256;

  explicit BARCODE_SOURCE(const BARCODE_KIND& barcode_kind) : kind(barcode_kind) {}

  // The path of the art is the cell's data; data the kind cannot hold is refused with the
  // kind, the data and the library's reason.
  NEW_ART find(std::string_view cell, bool string_body) override;
  // A barcode's cell names no file.
  std::optional<std::string> path_of(std::string_view, bool) const override { return {}; }
  std::optional<std::string_view> postscript(const std::string& data) override;
  void next_document() override { cache.next_document(); }

 private:
  // The art of data, encoded now unless the cache holds it; null with why set when the
  // kind cannot hold it.
  const CACHED_ART* art_of(const std::string& data, std::string& why);

  const BARCODE_KIND& kind;
  ART_CACHE cache{kCachedSymbols, kCachedSymbols << 14};
};
