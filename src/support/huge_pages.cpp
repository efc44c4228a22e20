#include "support/huge_pages.h"

#include <sys/mman.h>
#include <cstdint>
#include <new>

namespace {

size_t whole_huge_pages(size_t bytes) {
  return (bytes + HUGE_PAGE_BLOCKS::kHugePage - 1) / HUGE_PAGE_BLOCKS::kHugePage *
         HUGE_PAGE_BLOCKS::kHugePage;
}

}  // namespace

// The mapping is a huge page longer than the block, so that an aligned block fits in it;
// what lies before and after the block is given back at once.
void* HUGE_PAGE_BLOCKS::do_allocate(size_t bytes, size_t alignment) {
  if (bytes < kHugePage || alignment > kHugePage) {
    return std::pmr::new_delete_resource()->allocate(bytes, alignment);
  }
  const size_t size = whole_huge_pages(bytes);
  void* mapped =
      ::mmap(nullptr, size + kHugePage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (mapped == MAP_FAILED) throw std::bad_alloc();
  char* const start = static_cast<char*>(mapped);
  const size_t before = (kHugePage - reinterpret_cast<uintptr_t>(start) % kHugePage) % kHugePage;
  if (before > 0) ::munmap(start, before);
  ::munmap(start + before + size, kHugePage - before);
#ifdef MADV_HUGEPAGE
  ::madvise(start + before, size, MADV_HUGEPAGE);  // a refusal only costs the gain
#endif
  return start + before;
}

void HUGE_PAGE_BLOCKS::do_deallocate(void* block, size_t bytes, size_t alignment) {
  if (bytes < kHugePage || alignment > kHugePage) {
    std::pmr::new_delete_resource()->deallocate(block, bytes, alignment);
    return;
  }
  ::munmap(block, whole_huge_pages(bytes));
}
