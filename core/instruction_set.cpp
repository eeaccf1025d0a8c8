#include "core/instruction_set.h"

namespace corvane {
namespace {

InstructionSet& Current() {
  static InstructionSet current = BestInstructionSet();
  return current;
}

}  // namespace

InstructionSet BestInstructionSet() {
#if defined(__x86_64__)
  const bool v3 = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma") &&
                  __builtin_cpu_supports("bmi") && __builtin_cpu_supports("bmi2");
  const bool v4 = __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
                  __builtin_cpu_supports("avx512cd") && __builtin_cpu_supports("avx512dq") &&
                  __builtin_cpu_supports("avx512vl");
  if (v3 && v4) return InstructionSet::V4;
  if (v3) return InstructionSet::V3;
#endif
  return InstructionSet::V2;
}

InstructionSet CurrentInstructionSet() { return Current(); }
void UseInstructionSet(InstructionSet set) { Current() = set; }

}  // namespace corvane
