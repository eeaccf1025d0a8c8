#include "core/pixel_buffer.h"

#include <sys/mman.h>

#include <cstdio>
#include <limits>
#include <new>

namespace corvane {
namespace {

constexpr std::size_t kHugePage = std::size_t{2} << 20;
constexpr std::align_val_t kAlignment{64};

// From here on it matters whether the memory exists: the system promises more than it has, and ends a program
// that makes use of the promise.
constexpr std::size_t kLarge = std::size_t{64} << 20;

// Bytes that can be had without ending anything; no limit where the system does not tell.
std::size_t AvailableMemory() {
  unsigned long long total = 0;
  std::FILE* file = std::fopen("/proc/meminfo", "r");
  if (file == nullptr) return std::numeric_limits<std::size_t>::max();
  char line[128];
  while (std::fgets(line, sizeof line, file) != nullptr) {
    unsigned long long kilobytes = 0;
    if (std::sscanf(line, "MemAvailable: %llu", &kilobytes) == 1 ||
        std::sscanf(line, "SwapFree: %llu", &kilobytes) == 1) {
      total += kilobytes << 10;
    }
  }
  std::fclose(file);
  return total > 0 ? static_cast<std::size_t>(total) : std::numeric_limits<std::size_t>::max();
}

std::size_t WholePages(std::size_t bytes) { return (bytes + kHugePage - 1) / kHugePage * kHugePage; }

}  // namespace

void* AllocatePixels(std::size_t bytes) {
  if (bytes < kHugePage) return ::operator new(bytes, kAlignment);
  if (bytes >= kLarge && bytes > AvailableMemory()) throw std::bad_alloc();
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
