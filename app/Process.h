#pragma once

namespace corvane {

// Prepares the process before anything else: failed writes return errors instead of raising signals; closed
// standard descriptors go to /dev/null, so that no file of ours becomes standard output; memory is set aside.
// False where there is too little memory to show a window.
bool PrepareProcess();

}  // namespace corvane
