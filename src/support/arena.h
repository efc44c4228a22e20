// Objects made in a memory resource, such as the arena of a document, whose memory comes
// back all at once when the resource goes. Each object is still destroyed on its own, so
// that what it holds elsewhere is freed.
#pragma once

#include <memory>
#include <memory_resource>
#include <new>
#include <utility>

template <class T>
class IN_RESOURCE_DELETE {
 public:
  IN_RESOURCE_DELETE() = default;
  explicit IN_RESOURCE_DELETE(std::pmr::memory_resource* from) : memory(from) {}
  void operator()(T* object) const {
    object->~T();
    memory->deallocate(object, sizeof(T), alignof(T));
  }

 private:
  std::pmr::memory_resource* memory = nullptr;
};

template <class T>
using IN_RESOURCE = std::unique_ptr<T, IN_RESOURCE_DELETE<T>>;

template <class T, class... ARGS>
IN_RESOURCE<T> make_in(std::pmr::memory_resource* memory, ARGS&&... args) {
  void* place = memory->allocate(sizeof(T), alignof(T));
  try {
    return IN_RESOURCE<T>(::new (place) T(std::forward<ARGS>(args)...),
                          IN_RESOURCE_DELETE<T>(memory));
  } catch (...) {
    memory->deallocate(place, sizeof(T), alignof(T));
    throw;
  }
}
