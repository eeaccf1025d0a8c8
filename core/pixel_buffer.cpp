#include "core/pixel_buffer.h"

#include <sys/mman.h>

#include <new>

namespace corvane {
namespace {

constexpr std::size_t kHugePage = std::size_t{2} << 20;
constexpr std::align_val_t kAlignment{64};

std::size_t WholePages(std::size_t bytes) { return (bytes + kHugePage - 1) / kHugePage * kHugePage; }

}  // namespace

void* AllocatePixels(std::size_t bytes) {
  if (bytes < kHugePage) return ::operator new(bytes, kAlignment);
  // One huge page more than needed, so that the block can start on a huge-page boundary.
  const std::size_t whole = WholePages(bytes);
  void* memory = mmap(nullptr, whole + kHugePage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) throw std::bad_alloc();
  char* start = static_cast<char*>(memory);
  const std::size_t misfit = reinterpret_cast<std::size_t>(start) % kHugePage;
  char* aligned = misfit == 0 ? start : start + (kHugePage - misfit);
  if (aligned != start) munmap(start, static_cast<std::size_t>(aligned - start));
  char* end = aligned + whole;
  char* mapped = start + whole + kHugePage;
  if (end != mapped) munmap(end, static_cast<std::size_t>(mapped - end));
  madvise(aligned, whole, MADV_HUGEPAGE);
  return aligned;
}

void FreePixels(void* memory, std::size_t bytes) {
  if (memory == nullptr) return;
  if (bytes < kHugePage) {
    ::operator delete(memory, kAlignment);
  } else {
    munmap(memory, WholePages(bytes));
  }
}

}  // namespace corvane
