#include "base/pixel_buffer.h"

#include <sys/mman.h>

#include <cstdio>
#include <limits>
#include <new>
#include <utility>

#include "base/memory_reserve.h"

namespace corvane {
namespace {

constexpr std::size_t kPage = 4096;
constexpr std::size_t kHugePage = std::size_t{2} << 20;
// From here on a block comes from the system and goes back to it: on the heap, pictures of changing sizes
// would leave holes that are never given back.
constexpr std::size_t kMapped = std::size_t{512} << 10;
constexpr std::align_val_t kAlignment{64};

// From here on a request is compared with the memory that exists: the system promises more than it has, and
// kills a program that uses the promise.
constexpr std::size_t kLarge = std::size_t{64} << 20;

// Bytes that can be used without a program being killed; no limit where the system does not tell.
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

// The block that was freed last, for the next one of its size: the system clears the pages of a fresh one,
// which takes as long as filling them.
struct Spare {
  void* memory = nullptr;
  std::size_t bytes = 0;
};
constexpr std::size_t kLargestSpare = std::size_t{32} << 20;
constinit Spare spare;

std::size_t WholePages(std::size_t bytes, std::size_t page) { return (bytes + page - 1) / page * page; }

char* Map(std::size_t bytes, int flags) {
  const auto map = [&] {
    return mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | flags, -1, 0);
  };
  void* memory = map();
  if (memory == MAP_FAILED && spare.memory != nullptr) {
    const Spare given = std::exchange(spare, {});
    munmap(given.memory, given.bytes);
    memory = map();
  }
  if (memory == MAP_FAILED) throw std::bad_alloc();
  return static_cast<char*>(memory);
}

void* MapHugePages(std::size_t bytes) {
  // One huge page more than needed, so that the block can start on a huge-page boundary.
  const std::size_t whole = WholePages(bytes, kHugePage);
  char* start = Map(whole + kHugePage, 0);
  const std::size_t misfit = reinterpret_cast<std::size_t>(start) % kHugePage;
  char* aligned = misfit == 0 ? start : start + (kHugePage - misfit);
  if (aligned != start) munmap(start, static_cast<std::size_t>(aligned - start));
  char* end = aligned + whole;
  char* mapped = start + whole + kHugePage;
  if (end != mapped) munmap(end, static_cast<std::size_t>(mapped - end));
  madvise(aligned, whole, MADV_HUGEPAGE);
  return aligned;
}

}  // namespace

void* AllocatePixels(std::size_t bytes) {
  if (bytes < kMapped) return ::operator new(bytes, kAlignment);
  // Windows and messages need what is left of the reserve.
  if (MemoryReserveIsGiven() && !KeepMemoryReserve()) throw std::bad_alloc();
  // All pages at once: one by one, as they are written to, they would cost more than the pixels.
  if (bytes < kHugePage) return Map(WholePages(bytes, kPage), MAP_POPULATE);
  if (bytes >= kLarge && bytes > AvailableMemory()) throw std::bad_alloc();
  if (spare.bytes == WholePages(bytes, kHugePage)) return std::exchange(spare, {}).memory;
  return MapHugePages(bytes);
}

void FreePixels(void* memory, std::size_t bytes) {
  if (memory == nullptr) return;
  if (bytes < kMapped) {
    ::operator delete(memory, kAlignment);
    return;
  }
  if (bytes < kHugePage) {
    munmap(memory, WholePages(bytes, kPage));
    return;
  }
  Spare freed{memory, WholePages(bytes, kHugePage)};
  if (freed.bytes <= kLargestSpare) std::swap(freed, spare);
  if (freed.memory != nullptr) munmap(freed.memory, freed.bytes);
}

}  // namespace corvane
