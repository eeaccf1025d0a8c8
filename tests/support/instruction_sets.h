#pragma once

#include <gtest/gtest.h>

#include "base/instruction_set.h"

namespace corvane {

// Runs `check` once with each instruction set that this processor has, the plain one included.
template <class Check>
void OnEveryInstructionSet(Check check) {
  static constexpr const char* kNames[] = {"Plain", "Sse4", "Avx2", "Avx512"};
  for (int i = 0; i <= static_cast<int>(BestInstructionSet()); ++i) {
    const auto set = static_cast<InstructionSet>(i);
    SCOPED_TRACE(testing::Message() << "instruction set " << kNames[i]);
    UseInstructionSet(set);
    check();
  }
  UseInstructionSet(BestInstructionSet());
}

}  // namespace corvane
