#include <bit>
#include <cerrno>
#include <cstddef>

#include "support/counted_allocations.h"

namespace bench {

namespace {

std::atomic<int> allocations{0};

}  // namespace

int TakeAllocations() {
  return allocations.exchange(0);
}

}  // namespace bench

extern "C" {

// The C library's own, under names of its own.
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);

void* malloc(std::size_t size) {
  ++bench::allocations;
  return __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) {
  ++bench::allocations;
  return __libc_calloc(count, size);
}

void* realloc(void* memory, std::size_t size) {
  ++bench::allocations;
  return __libc_realloc(memory, size);
}

void* memalign(std::size_t alignment, std::size_t size) {
  ++bench::allocations;
  return __libc_memalign(alignment, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
  return memalign(alignment, size);
}

int posix_memalign(void** memory, std::size_t alignment, std::size_t size) {
  if (!std::has_single_bit(alignment) || alignment % sizeof(void*) != 0) return EINVAL;
  void* const allocated = memalign(alignment, size);
  if (!allocated) return ENOMEM;
  *memory = allocated;
  return 0;
}

}  // extern "C"
