#pragma once

#include "filters/filter.h"

namespace corvane {

// Smooths each row by fitting a parabola through five neighbors (Savitzky and Golay): the weights -3, 12, 17,
// 12, -3 over 35, summed in this order in 32 bits. Bytes are limited and rounded, ties to even; data are
// neither. The two columns at each side keep their values.
DECLARE_VECTOR_KERNELS(FilterEntry, reduceGrain, ReduceGrain)

}  // namespace corvane
