#include "core/render.h"

#include "core/level_kernels.h"

namespace corvane {

ValueRange FindRange(ConstFloatView values) {
  ValueRange range;
  ChosenLevelKernels().findRange(values.values, values.Count(), &range.min, &range.max);
  return range;
}

}  // namespace corvane
