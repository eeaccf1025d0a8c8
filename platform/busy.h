#pragma once

#include "platform/platform.h"

namespace corvane {

// Shows the busy cursor as long as the object lives; a message box ends it earlier.
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
