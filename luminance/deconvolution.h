#pragma once

#include <vector>

#include "base/display_bitmap.h"
#include "base/float_image.h"
#include "base/progress.h"

namespace corvane {

// How a run meets the user. Row(r, rows) is called after each image row of an iteration, r counted from 0.
class IterationWatch : public Progress {
 public:
  // `iteration`, counted from 1, is finished; its residual energy is `relativeError` percent of the first
  // iteration's. False once the user has cancelled.
  virtual bool Iteration(int iteration, float relativeError) = 0;
};

enum class Restoration {
  Standard,  // the correction is weighted by the brightness it finds
  DeepSky,   // the full correction, but only upwards
};

// A circular Gaussian as one factor of its separable kernel, -halfWidth..halfWidth, in single precision: each
// operation is rounded, the exponential is that of portable_math.h rounded to 32 bits.
struct PointSpread {
  int halfWidth = 0;
  std::vector<float> kernel;
  float normalizer = 1;  // the square of the kernel's sum
};
// `radius` is the half width at half maximum in pixels, 0.5..20.
PointSpread GaussianPointSpread(float radius);

// Sharpens an image that a circular Gaussian has blurred. Each iteration blurs the estimate (rows, then
// columns, each sum in ascending order in single precision, then divided by the normalizer; edges repeated)
// and adds what the observed image has beyond that. It ends once the residual energy, the sum of the squared
// residuals, falls by less than 0.02 percent of the first iteration's, or after 75 iterations.
//
// The squares are summed in 64 bits: in each row sixteen sums, of the columns 0, 16, 32 ..., 1, 17, 33 ...
// and so on, are added up in that order, then the rows from the first stored one on. So a run has the same
// results and the same length with every instruction set. The weight of Standard is a sine computed in 64
// bits and rounded to 32.
//
// False if the watch cancelled: the pixels are then as before. Row padding is never touched. Throws
// std::bad_alloc before anything is changed.
bool DeconvolveDisplay(GrayView image, float radius, Restoration mode, IterationWatch& watch);

// The same on physical values, 0 or above: nothing is rounded, values have no upper limit, the weight is
// relative to the brightest blurred value (no light at all: weight 0), the limit is 0.0015 percent and 100
// iterations. A blank pixel (NaN) counts as 0 and becomes 0, because the blur would spread it over the whole
// image.
bool Deconv16(FloatView image, float radius, Restoration mode, IterationWatch& watch);

}  // namespace corvane
