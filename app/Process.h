#pragma once

namespace corvane {

// What the process needs before all else: a failed write is reported and ends nothing; closed standard
// descriptors lead to nowhere, so that no file of ours becomes standard output; memory is set aside. False
// where there is too little memory to show a window.
bool PrepareProcess();

}  // namespace corvane
