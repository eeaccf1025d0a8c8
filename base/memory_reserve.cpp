#include "base/memory_reserve.h"

#include <sys/mman.h>

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdint>

#if defined(__has_feature)
#define CORVANE_HAS_FEATURE(name) __has_feature(name)
#else
#define CORVANE_HAS_FEATURE(name) 0
#endif
#if defined(__SANITIZE_ADDRESS__) || CORVANE_HAS_FEATURE(address_sanitizer) || !defined(__GLIBC__)
#define CORVANE_OWN_MALLOC 0
#else
#define CORVANE_OWN_MALLOC 1
#endif

namespace corvane {
namespace {

constexpr std::size_t kReserve = std::size_t{12} << 20;
// Enough for the picture of a window: the toolkit does not survive when that request fails.
constexpr std::size_t kSmall = std::size_t{4} << 20;

std::atomic<void*> reserve{nullptr};
std::atomic<bool> given{false};

// True when a request for `bytes` that failed is worth another try.
[[maybe_unused]] bool GiveReserve(std::size_t bytes) {
  if (bytes > kSmall) return false;
  void* memory = reserve.exchange(nullptr);
  if (memory == nullptr) return false;
  munmap(memory, kReserve);
  given = true;
  return true;
}

}  // namespace

bool KeepMemoryReserve() {
  if (CORVANE_OWN_MALLOC == 0 || reserve != nullptr) return true;
  // Written to, because the system promises more memory than it has.
  void* memory =
      mmap(nullptr, kReserve, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_POPULATE, -1, 0);
  if (memory == MAP_FAILED) return false;
  reserve = memory;
  given = false;
  return true;
}

bool MemoryReserveIsGiven() { return given; }

}  // namespace corvane

#if CORVANE_OWN_MALLOC

// The C library's own allocator, under the names by which it may be replaced, with a second try.
extern "C" {

void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
void* __libc_memalign(std::size_t, std::size_t);

void* malloc(std::size_t bytes) noexcept {
  void* memory = __libc_malloc(bytes);
  return memory == nullptr && corvane::GiveReserve(bytes) ? __libc_malloc(bytes) : memory;
}

void* calloc(std::size_t count, std::size_t size) noexcept {
  void* memory = __libc_calloc(count, size);
  const bool overflows = size != 0 && count > SIZE_MAX / size;
  return memory == nullptr && !overflows && corvane::GiveReserve(count * size) ? __libc_calloc(count, size)
                                                                               : memory;
}

void* realloc(void* old, std::size_t bytes) noexcept {
  void* memory = __libc_realloc(old, bytes);
  return memory == nullptr && bytes != 0 && corvane::GiveReserve(bytes) ? __libc_realloc(old, bytes) : memory;
}

void* memalign(std::size_t alignment, std::size_t bytes) noexcept {
  void* memory = __libc_memalign(alignment, bytes);
  return memory == nullptr && corvane::GiveReserve(bytes) ? __libc_memalign(alignment, bytes) : memory;
}

void* aligned_alloc(std::size_t alignment, std::size_t bytes) noexcept { return memalign(alignment, bytes); }

int posix_memalign(void** memory, std::size_t alignment, std::size_t bytes) noexcept {
  if (alignment % sizeof(void*) != 0 || (alignment & (alignment - 1)) != 0) return EINVAL;
  void* block = memalign(alignment, bytes);
  if (block == nullptr) return ENOMEM;
  *memory = block;
  return 0;
}

}  // extern "C"

#endif
