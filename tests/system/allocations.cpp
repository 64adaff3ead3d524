#include "tests/system/allocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<std::int64_t> counted = 0;

}  // namespace

namespace estructura::support {

std::int64_t allocated_bytes() {
  return counted;
}

}  // namespace estructura::support

#ifndef ESTRUCTURA_ADDRESS_SANITIZER

// The other forms of new and delete end in these two.
void* operator new(std::size_t size) {
  counted += static_cast<std::int64_t>(size);
  if (void* const memory = std::malloc(size == 0 ? 1 : size); memory != nullptr) return memory;
  throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
  std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}

#endif
