#pragma once

namespace corvane {

// The vector instructions that hot kernels were compiled for: none, or those of a processor generation.
enum class InstructionSet { Plain, Sse4, Avx2, Avx512 };

// The newest set that this processor has.
InstructionSet BestInstructionSet();

// The set in use: the best one until `UseInstructionSet` chooses another (tests run all of them).
InstructionSet CurrentInstructionSet();
void UseInstructionSet(InstructionSet set);

// A kernel family is a struct of function pointers, filled once in each VECTOR_NAMESPACE as
//   extern const Kernels kernels;
// DECLARE_VECTOR_KERNELS(Kernels, kernels, Chosen) declares them all and a function `Chosen()` over them.
#if defined(__x86_64__)
#define DECLARE_VECTOR_KERNELS(Type, name, Chosen) \
  namespace vector_plain {                         \
  extern const Type name;                          \
  }                                                \
  namespace vector_sse4 {                          \
  extern const Type name;                          \
  }                                                \
  namespace vector_avx2 {                          \
  extern const Type name;                          \
  }                                                \
  namespace vector_avx512 {                        \
  extern const Type name;                          \
  }                                                \
  inline const Type& Chosen() {                    \
    switch (CurrentInstructionSet()) {             \
      case InstructionSet::Avx512:                 \
        return vector_avx512::name;                \
      case InstructionSet::Avx2:                   \
        return vector_avx2::name;                  \
      case InstructionSet::Sse4:                   \
        return vector_sse4::name;                  \
      default:                                     \
        return vector_plain::name;                 \
    }                                              \
  }
#else
#define DECLARE_VECTOR_KERNELS(Type, name, Chosen) \
  namespace vector_plain {                         \
  extern const Type name;                          \
  }                                                \
  inline const Type& Chosen() { return vector_plain::name; }
#endif

}  // namespace corvane
