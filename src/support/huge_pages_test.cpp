#include "support/huge_pages.h"

#include <gtest/gtest.h>
#include <cstdint>
#include <cstring>
#include <vector>

// Blocks of every size are whole, aligned and apart: each is filled with a byte of its own,
// and every byte is still its own once all are filled. Large ones begin on a huge page.
TEST(HugePagesTest, BlocksAreWholeAlignedAndApart) {
  constexpr size_t kHuge = HUGE_PAGE_BLOCKS::kHugePage;
  const struct {
    size_t bytes;
    size_t alignment;
  } cases[] = {
      {1, 1},         {4096, 64},          {kHuge - 1, 8},     {kHuge, 8},
      {kHuge + 1, 8}, {3 * kHuge + 5, 16}, {kHuge, 2 * kHuge},
  };
  HUGE_PAGE_BLOCKS memory;
  std::vector<char*> blocks;
  for (const auto& c : cases) {
    auto* block = static_cast<char*>(memory.allocate(c.bytes, c.alignment));
    const auto address = reinterpret_cast<uintptr_t>(block);
    EXPECT_EQ(0u, address % c.alignment) << c.bytes;
    if (c.bytes >= kHuge && c.alignment <= kHuge) {
      EXPECT_EQ(0u, address % kHuge) << c.bytes;
    }
    std::memset(block, static_cast<int>(blocks.size() + 1), c.bytes);
    blocks.push_back(block);
  }
  for (size_t i = 0; i < blocks.size(); ++i) {
    const char mark = static_cast<char>(i + 1);
    EXPECT_EQ(mark, blocks[i][0]);
    EXPECT_EQ(mark, blocks[i][cases[i].bytes - 1]);
    memory.deallocate(blocks[i], cases[i].bytes, cases[i].alignment);
  }
}
