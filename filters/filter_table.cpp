#include "filters/filter_table.h"

#include "filters/equalization.h"
#include "filters/grain.h"
#include "filters/median.h"
#include "filters/sharpening.h"
#include "filters/smoothing.h"

namespace corvane {

std::array<FilterEntry, 7> FilterTable() {
  return {
      Equalization(), Median(), Average(), GaussianBlur(), Sharpen(), UnsharpMask(), ReduceGrain(),
  };
}

}  // namespace corvane
