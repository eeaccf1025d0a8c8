#pragma once

#include <gtest/gtest.h>

#include "core/instruction_set.h"

namespace corvane {

// Runs `check` once with each instruction set that this processor has.
template <class Check>
void OnEveryInstructionSet(Check check) {
  for (const InstructionSet set : {InstructionSet::V2, InstructionSet::V3, InstructionSet::V4}) {
    if (set > BestInstructionSet()) break;
    SCOPED_TRACE(testing::Message() << "instruction set V" << static_cast<int>(set) + 2);
    UseInstructionSet(set);
    check();
  }
  UseInstructionSet(BestInstructionSet());
}

}  // namespace corvane
