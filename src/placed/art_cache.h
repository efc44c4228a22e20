// Art made or read once per run, however many documents of a batch show it: a barcode by
// its data, a photo by its file. The least recently used art goes once the cache holds more
// than its bounds allow, so memory stays flat over a batch; art that the document being made
// uses is never dropped, since its PostScript is written by reference.
#pragma once

#include <cstddef>
#include <list>
#include <string>
#include <unordered_map>

#include "placed/epsf_info.h"

struct CACHED_ART {
  std::string postscript;  // the EPS art, as "-keep" embeds it
  EPS_BBOX box;
  int pixels_wide = 0;  // a photo's pixels
  int pixels_high = 0;
  std::string unusable;  // why a file could not become art; then it has none
};

class ART_CACHE {
 public:
  ART_CACHE(size_t max_entries, size_t max_bytes)
      : entries_max(max_entries), bytes_max(max_bytes) {}

  // The art known by key, now the most recently used; null when the cache holds none. Valid
  // until the document after the next is started.
  const CACHED_ART* find(const std::string& key);
  // Holds art under key (which it must not hold yet) and returns it, valid as find's.
  const CACHED_ART& add(const std::string& key, CACHED_ART art);
  // A document is written: art used before may go.
  void next_document() { ++generation; }
  size_t size() const { return order.size(); }

 private:
  struct ENTRY {
    std::string key;
    CACHED_ART art;
    unsigned long long used = 0;  // the generation that last used it
  };
  void drop_old();

  size_t entries_max;
  size_t bytes_max;
  size_t bytes = 0;
  unsigned long long generation = 0;
  std::list<ENTRY> order;  // most recently used first; nodes stay put, so views stay valid
  std::unordered_map<std::string, std::list<ENTRY>::iterator> index;
};
