#include "placed/art_cache.h"

const CACHED_ART* ART_CACHE::find(const std::string& key) {
  const auto found = index.find(key);
  if (found == index.end()) return nullptr;
  order.splice(order.begin(), order, found->second);
  found->second->used = generation;
  return &found->second->art;
}

const CACHED_ART& ART_CACHE::add(const std::string& key, CACHED_ART art) {
  bytes += art.postscript.size();
  order.push_front(ENTRY{key, std::move(art), generation});
  index.emplace(key, order.begin());
  drop_old();
  return order.front().art;
}

// The art in use since the last document was written is kept, whatever it weighs.
void ART_CACHE::drop_old() {
  while ((order.size() > entries_max || bytes > bytes_max) && order.back().used < generation) {
    bytes -= order.back().art.postscript.size();
    index.erase(order.back().key);
    order.pop_back();
  }
}
