// Memory for a large arena. Every 4 KiB page that a process touches for the first time
// costs a fault, which on a large document's models adds up to a good part of the run; a
// block of a huge page or more is therefore mapped on its own, aligned to huge pages and
// offered to the kernel for them, so that it is filled 2 MiB at a time. Smaller blocks come
// from the heap, and a kernel that offers no huge pages fills the mapping as any other.
#pragma once

#include <cstddef>
#include <memory_resource>

class HUGE_PAGE_BLOCKS : public std::pmr::memory_resource {
 public:
  static constexpr size_t kHugePage = size_t{2} << 20;

 private:
  void* do_allocate(size_t bytes, size_t alignment) override;
  void do_deallocate(void* block, size_t bytes, size_t alignment) override;
  bool do_is_equal(const std::pmr::memory_resource& other) const noexcept override {
    return this == &other;
  }
};
