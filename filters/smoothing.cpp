#include "filters/smoothing.h"

#include "filters/blur.h"
#include "filters/gaussian_kernels.h"

namespace corvane::VECTOR_NAMESPACE {
namespace {

template <class Run>
ALWAYS_INLINE auto Report(const Run& run) {
  return [&run](int y) { return run.progress.Row(y, run.source.height); };
}

bool AverageBytes(const PreviewRun& run) {
  switch (run.radius) {
    case 1:
      return BoxBlur<1>(run.source, run.result, Report(run));
    case 2:
      return BoxBlur<2>(run.source, run.result, Report(run));
    default:
      return BoxBlur<3>(run.source, run.result, Report(run));
  }
}

bool AverageFloats(const DataRun& run) {
  switch (run.radius) {
    case 1:
      return Blur<BoxKernel<1>>(run.source, run.result, Report(run));
    case 2:
      return Blur<BoxKernel<2>>(run.source, run.result, Report(run));
    default:
      return Blur<BoxKernel<3>>(run.source, run.result, Report(run));
  }
}

template <class Run>
bool GaussianRows(const Run& run) {
  switch (run.radius) {
    case 1:
      return Blur<GaussianKernel<1>>(run.source, run.result, Report(run));
    case 2:
      return Blur<GaussianKernel<2>>(run.source, run.result, Report(run));
    default:
      return Blur<GaussianKernel<3>>(run.source, run.result, Report(run));
  }
}

}  // namespace

extern const FilterEntry average{"Average", true, AverageBytes, AverageFloats};
extern const FilterEntry gaussianBlur{"Gaussian Blur", true, GaussianRows<PreviewRun>, GaussianRows<DataRun>};

}  // namespace corvane::VECTOR_NAMESPACE
