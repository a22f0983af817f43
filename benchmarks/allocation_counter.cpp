#include "benchmarks/allocation_counter.h"

#include <malloc.h>

#include <cstdlib>
#include <new>

namespace {

std::uint64_t count = 0;

}  // namespace

namespace corvane::benchmarks {

std::uint64_t allocationCount() { return count; }

std::uint64_t allocatedBytes() {
  const auto heap = mallinfo2();
  return heap.uordblks + heap.hblkhd;
}

}  // namespace corvane::benchmarks

void* operator new(std::size_t size) {
  ++count;
  if (void* const block = std::malloc(size)) return block;
  throw std::bad_alloc();
}
void* operator new(std::size_t size, std::align_val_t alignment) {
  ++count;
  const auto unit = static_cast<std::size_t>(alignment);
  if (void* const block = std::aligned_alloc(unit, (size + unit - 1) / unit * unit)) return block;
  throw std::bad_alloc();
}
void operator delete(void* block, std::align_val_t) noexcept { std::free(block); }
void operator delete(void* block, std::size_t, std::align_val_t) noexcept { std::free(block); }
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
