#include "placed/art_cache.h"

#include <gtest/gtest.h>
#include <string>

namespace {

CACHED_ART art(size_t bytes) {
  CACHED_ART made;
  made.postscript.assign(bytes, 'x');
  return made;
}

}  // namespace

// The least recently used art goes first, once the count or the bytes pass their bounds,
// but never art that the document being made uses: its PostScript is written by reference.
TEST(ArtCacheTest, DropsLeastRecentlyUsedOfEarlierDocuments) {
  ART_CACHE cache(2, 1000);
  const CACHED_ART* a = &cache.add("a", art(10));
  cache.add("b", art(10));
  cache.add("c", art(10));  // all three are the document's
  EXPECT_EQ(3u, cache.size());
  EXPECT_EQ(a, cache.find("a"));
  cache.next_document();
  cache.next_document();
  cache.find("b");
  cache.add("d", art(10));  // a and c are older; c was used less recently than a
  EXPECT_EQ(2u, cache.size());
  EXPECT_EQ(nullptr, cache.find("a"));
  EXPECT_EQ(nullptr, cache.find("c"));
  EXPECT_NE(nullptr, cache.find("b"));
  EXPECT_NE(nullptr, cache.find("d"));
}

TEST(ArtCacheTest, BoundedByBytes) {
  ART_CACHE cache(100, 25);
  cache.add("a", art(10));
  cache.add("b", art(10));
  cache.next_document();
  cache.add("c", art(10));
  EXPECT_EQ(nullptr, cache.find("a"));
  EXPECT_NE(nullptr, cache.find("b"));
  cache.next_document();
  cache.add("big", art(100));  // more than the bound alone: kept while in use
  EXPECT_NE(nullptr, cache.find("big"));
  EXPECT_EQ(1u, cache.size());
}
