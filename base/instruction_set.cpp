#include "base/instruction_set.h"

namespace corvane {
namespace {

InstructionSet& Current() {
  static InstructionSet current = BestInstructionSet();
  return current;
}

}  // namespace

InstructionSet BestInstructionSet() {
#if defined(__x86_64__)
  const bool sse4 = __builtin_cpu_supports("sse4.2") && __builtin_cpu_supports("popcnt");
  const bool avx2 = sse4 && __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma") &&
                    __builtin_cpu_supports("bmi") && __builtin_cpu_supports("bmi2");
  const bool avx512 = avx2 && __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
                      __builtin_cpu_supports("avx512cd") && __builtin_cpu_supports("avx512dq") &&
                      __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512vbmi");
  if (avx512) return InstructionSet::Avx512;
  if (avx2) return InstructionSet::Avx2;
  if (sse4) return InstructionSet::Sse4;
#endif
  return InstructionSet::Plain;
}

InstructionSet CurrentInstructionSet() { return Current(); }
void UseInstructionSet(InstructionSet set) { Current() = set; }

}  // namespace corvane
