#include "tests/support/failing_calls.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace {

corvane::FailingCalls* active = nullptr;

bool Fails() {
  if (active == nullptr || !active->Fails()) return false;
  errno = EIO;
  return true;
}

}  // namespace

// These take the place of the C library's in a test program.
extern "C" {

int rename(const char* from, const char* to) noexcept {
  return Fails() ? -1 : renameat(AT_FDCWD, from, AT_FDCWD, to);
}
int unlink(const char* path) noexcept { return Fails() ? -1 : unlinkat(AT_FDCWD, path, 0); }
int fsync(int descriptor) { return Fails() ? -1 : static_cast<int>(syscall(SYS_fsync, descriptor)); }

}  // extern "C"

namespace corvane {

FailingCalls::FailingCalls(int first, int times) : first_(first), times_(times) { active = this; }
FailingCalls::~FailingCalls() { active = nullptr; }

}  // namespace corvane
