#pragma once

namespace corvane {

// Some memory set aside. A small request that fails anywhere in the program, the toolkit's own included, is
// served from it, so that a program without memory can still say so and go on; a large one fails as ever, and
// who makes it is prepared. Builds with a memory checker, which has its own allocator, set aside nothing.

// Sets the memory aside, at the start and again once it was given. False where there is not enough.
bool KeepMemoryReserve();
// True between a request served from the reserve and the next success of KeepMemoryReserve.
bool MemoryReserveIsGiven();

}  // namespace corvane
