#pragma once

namespace corvane {

// The vector instructions that hot kernels were compiled for, from the oldest to the newest.
enum class InstructionSet { V2, V3, V4 };

// The newest set this processor has.
InstructionSet BestInstructionSet();

// The set in use: the best one until `UseInstructionSet` chooses another (tests run all of them).
InstructionSet CurrentInstructionSet();
void UseInstructionSet(InstructionSet set);

// A kernel family is a struct of function pointers, filled once in each VECTOR_NAMESPACE as
//   extern const Kernels kernels;
// DECLARE_VECTOR_KERNELS(Kernels, kernels) declares them all and a function `Chosen()` over them.
#if defined(__x86_64__)
#define DECLARE_VECTOR_KERNELS(Type, name, Chosen) \
  namespace vector_v2 {                            \
  extern const Type name;                          \
  }                                                \
  namespace vector_v3 {                            \
  extern const Type name;                          \
  }                                                \
  namespace vector_v4 {                            \
  extern const Type name;                          \
  }                                                \
  inline const Type& Chosen() {                    \
    switch (CurrentInstructionSet()) {             \
      case InstructionSet::V4:                     \
        return vector_v4::name;                    \
      case InstructionSet::V3:                     \
        return vector_v3::name;                    \
      default:                                     \
        return vector_v2::name;                    \
    }                                              \
  }
#else
#define DECLARE_VECTOR_KERNELS(Type, name, Chosen) \
  namespace vector_baseline {                      \
  extern const Type name;                          \
  }                                                \
  inline const Type& Chosen() { return vector_baseline::name; }
#endif

}  // namespace corvane
