#include "app/Process.h"

#include <fcntl.h>
#include <malloc.h>
#include <signal.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <initializer_list>

#include "base/memory_reserve.h"

namespace corvane {
namespace {

void IgnoreWriteSignals() {
  for (const int number : {SIGPIPE, SIGXFSZ}) signal(number, SIG_IGN);
}

void OpenStandardDescriptors() {
  for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor)
    if (fcntl(descriptor, F_GETFD) < 0) open("/dev/null", O_RDWR);  // takes the lowest free number
}

// Whether there is the memory that the toolkit needs for windows and fonts: with less it may fail halfway.
bool HasRoomToStart() {
  constexpr std::size_t kRoom = std::size_t{64} << 20;
  void* room = mmap(nullptr, kRoom, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  return room != MAP_FAILED && munmap(room, kRoom) == 0;
}

}  // namespace

bool PrepareProcess() {
  IgnoreWriteSignals();
  OpenStandardDescriptors();
  mallopt(M_ARENA_MAX, 1);  // a heap for each of the toolkit's threads takes 64 MB of addresses
  return HasRoomToStart() && KeepMemoryReserve();
}

}  // namespace corvane
