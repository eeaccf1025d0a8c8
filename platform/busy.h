#pragma once

#include "platform/platform.h"

namespace corvane {

// The busy cursor for as long as it lives; a message box ends it sooner.
class Busy {
 public:
  explicit Busy(Platform& platform) : os(platform) { os.BusyCursor(true); }
  ~Busy() { os.BusyCursor(false); }
  Busy(const Busy&) = delete;
  Busy& operator=(const Busy&) = delete;

 private:
  Platform& os;
};

}  // namespace corvane
