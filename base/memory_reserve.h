#pragma once

namespace corvane {

// Memory set aside, so that a program that has run out can still say so and go on: a small request that
// fails, in the toolkit too, is served from it. Large requests fail as usual; their callers are prepared.
// Builds with a memory checker, which has its own allocator, set nothing aside.

// Sets the memory aside: at the start, and again after it was used. False where there is not enough.
bool KeepMemoryReserve();
// True from a request served from the reserve until KeepMemoryReserve succeeds again.
bool MemoryReserveIsGiven();

}  // namespace corvane
