#include "luminance/deconvolution.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "base/pixel_buffer.h"
#include "luminance/deconvolution_kernels.h"
#include "luminance/portable_math.h"

namespace corvane {
namespace {

constexpr int kTilesAtATime = 16;  // whose transposed columns stay in the fastest cache

constexpr int RoundUp(int value, int step) { return (value + step - 1) / step * step; }

struct Energies {
  double lanes[kTile][kTile] = {};  // of the 16 rows in work
};

// Blurs an image in bands of 16 rows. The row sums of the rows that a band needs are held in a ring, tile by
// tile, so that the column sums run through memory in order. `Form` is DisplayForm or DataForm.
template <class Form>
class BandBlur {
 public:
  BandBlur(Form& form, const PointSpread& spread)
      : form_(form),
        spread_(spread),
        taps_(2 * spread.halfWidth + 1),
        bands_(RoundUp(form.Height(), kTile) / kTile),
        ahead_(RoundUp(spread.halfWidth, kTile) / kTile),
        ringBands_(std::min(bands_, 2 * ahead_ + 1)),
        // One row more than needed keeps tiles from sharing cache lines.
        tileSize_(static_cast<std::size_t>(ringBands_) * kTile * kTile + kTile),
        ring_(tileSize_ * (RoundUp(form.Width(), kSegment) / kTile)),
        columns_(static_cast<std::size_t>(kTile) * (kTilesAtATime * kTile + 2 * spread.halfWidth)),
        slots_(taps_ + kTile - 1) {}

  // One iteration's blur, finished by `form` segment by segment. False once `watch` cancels.
  bool Run(IterationWatch& watch, double& energy) {
    energy = 0;
    int summed = 0;
    for (int band = 0; band < bands_; ++band) {
      for (; summed < std::min(bands_, band + ahead_ + 1); ++summed) SumBandRows(summed);
      Energies energies;
      FinishBand(band, energies);
      const int rows = std::min(kTile, form_.Height() - band * kTile);
      for (int row = 0; row < rows; ++row) {
        double rowEnergy = 0;
        for (const double lane : energies.lanes[row]) rowEnergy += lane;
        energy += rowEnergy;
        if (!watch.Row(band * kTile + row, form_.Height())) return false;
      }
    }
    return true;
  }

 private:
  int SlotOf(int row) const { return (row / kTile % ringBands_ * kTile + row % kTile) * kTile; }

  void SumBandRows(int band) {
    form_.Prepare(band * kTile, std::min(kTile, form_.Height() - band * kTile));
    const int width = RoundUp(form_.Width(), kSegment);
    const int margin = spread_.halfWidth;
    float* fresh = columns_.data() + 2 * margin * kTile;
    Fill(band, 0, margin, columns_.data() + margin * kTile);
    for (int x = 0; x < margin; ++x)
      CopyColumn(columns_.data() + margin * kTile, columns_.data() + x * kTile);
    for (int x = 0; x < width; x += kTilesAtATime * kTile) {
      const int count = std::min(kTilesAtATime * kTile, width - x);
      Fill(band, x + margin, count, fresh);
      for (int tile = 0; tile < count; tile += kTile) {
        ChosenDeconvolutionKernels().sumRows(columns_.data() + tile * kTile, spread_.kernel.data(), taps_,
                                             Tile(x + tile) + SlotOf(band * kTile));
      }
      std::memmove(columns_.data(), columns_.data() + count * kTile, sizeof(float) * 2 * margin * kTile);
    }
  }

  // `count` transposed columns of the band's rows from column x on; the last column is repeated beyond the
  // edge.
  void Fill(int band, int x, int count, float* columns) {
    int done = 0;
    for (; done + kTile <= count && x + done + kTile <= form_.Width(); done += kTile) {
      form_.TransposeTile(band * kTile, x + done, columns + done * kTile);
    }
    for (; done < count; ++done) {
      form_.CopyColumn(band * kTile, std::min(x + done, form_.Width() - 1), columns + done * kTile);
    }
  }

  static void CopyColumn(const float* from, float* to) { std::memcpy(to, from, sizeof(float) * kTile); }

  float* Tile(int x) { return ring_.data() + tileSize_ * (x / kTile); }

  void FinishBand(int band, Energies& energies) {
    const int height = form_.Height();
    const int first = band * kTile;
    for (int i = 0; i < taps_ + kTile - 1; ++i) {
      slots_[i] = SlotOf(std::clamp(first - spread_.halfWidth + i, 0, height - 1));
    }
    alignas(64) float sums[kTile * kSegment];
    for (int x = 0; x < form_.Width(); x += kSegment) {
      for (int tile = 0; tile < kSegment; tile += kTile) {
        ChosenDeconvolutionKernels().sumColumns(Tile(x + tile), slots_.data(), spread_.kernel.data(), taps_,
                                                sums + tile);
      }
      const int count = std::min(kSegment, form_.Width() - x);
      for (int row = 0; row < kTile && first + row < height; ++row) {
        float* rowSums = sums + row * kSegment;
        std::fill(rowSums + count, rowSums + kSegment, 0.0f);  // beyond the edge no residual
        form_.Finish(first + row, x, count, rowSums, spread_.normalizer, energies.lanes[row]);
      }
    }
  }

  Form& form_;
  const PointSpread& spread_;
  const int taps_;
  const int bands_;
  const int ahead_;  // bands below the present one whose rows it needs
  const int ringBands_;
  const std::size_t tileSize_;
  PixelBuffer<float> ring_;
  PixelBuffer<float> columns_;
  std::vector<int> slots_;
};

// Asks for `count` values that the work comes to soon. It goes along 16 rows at once, too many for the
// processor to look ahead in each by itself.
template <class Value>
void Prefetch(const Value* values, int count) {
  constexpr int kLine = 64 / sizeof(Value);
  for (int i = 0; i < count; i += kLine) __builtin_prefetch(values + i);
}

// Runs `work` on whole segments: the last, shorter one of a row through buffers whose rest is 0.
template <class Value, class Work>
void OnWholeSegment(const Value* observed, Value* estimate, int count, Work work) {
  if (count == kSegment) return work(observed, estimate);
  Value observedRest[kSegment] = {};
  Value estimateRest[kSegment] = {};
  std::copy_n(observed, count, observedRest);
  std::copy_n(estimate, count, estimateRest);
  work(observedRest, estimateRest);
  std::copy_n(estimateRest, count, estimate);
}

class DisplayForm {
 public:
  static constexpr int kMostIterations = 75;
  static constexpr float kLeastGain = 0.02f;
  static constexpr int kAhead = 128;

  DisplayForm(GrayView image, Restoration mode)
      : estimate_(image),
        observed_(image.Size()),
        finish_(mode == Restoration::Standard ? ChosenDeconvolutionKernels().correctBytes
                                              : ChosenDeconvolutionKernels().raiseBytes) {}
  int Width() const { return estimate_.width; }
  int Height() const { return estimate_.height; }
  void Prepare(int row, int rows) {
    if (row < observedRows_) return;
    std::memcpy(observed_.data() + static_cast<std::size_t>(row) * estimate_.stride, estimate_.Row(row),
                static_cast<std::size_t>(rows) * estimate_.stride);
    observedRows_ = row + rows;
  }
  void TransposeTile(int row, int x, float* columns) const {
    const std::uint8_t* rows[kTile];
    for (int i = 0; i < kTile; ++i) {
      rows[i] = estimate_.Row(std::min(row + i, Height() - 1)) + x;
      Prefetch(rows[i] + kAhead, kTile);
    }
    ChosenDeconvolutionKernels().transposeBytes(rows, columns);
  }
  void CopyColumn(int row, int x, float* column) const {
    for (int i = 0; i < kTile; ++i) column[i] = estimate_.At(x, std::min(row + i, Height() - 1));
  }
  void Finish(int row, int x, int count, const float* sums, float normalizer, double* energy) {
    const std::size_t start = static_cast<std::size_t>(row) * estimate_.stride + x;
    Prefetch(observed_.data() + start + kAhead, kSegment);
    Prefetch(estimate_.bits + start + kAhead, kSegment);
    OnWholeSegment(observed_.data() + start, estimate_.bits + start, count,
                   [&](const std::uint8_t* observed, std::uint8_t* estimate) {
                     finish_(sums, normalizer, observed, estimate, energy);
                   });
  }
  void EndIteration() {}
  void EndRun() {}
  void Restore() {
    std::memcpy(estimate_.bits, observed_.data(), static_cast<std::size_t>(observedRows_) * estimate_.stride);
  }

 private:
  GrayView estimate_;
  ByteBuffer observed_;  // the first rows of the image as it was: the first iteration copies them as it goes
  int observedRows_ = 0;
  decltype(DeconvolutionKernels::correctBytes) finish_;
};

// Standard corrects an image only once its brightest blurred value is known. The correction then waits until
// the next iteration asks for the rows, so that it costs no pass of its own.
class DataForm {
 public:
  static constexpr int kMostIterations = 100;
  static constexpr float kLeastGain = 0.0015f;
  static constexpr int kAhead = 64;

  DataForm(FloatView image, Restoration mode)
      : estimate_(image), observed_(image.Count()), weighted_(mode == Restoration::Standard) {
    if (weighted_) blurred_.Resize(image.Count());
  }
  int Width() const { return estimate_.width; }
  int Height() const { return estimate_.height; }
  void Prepare(int row, int rows) {
    if (row >= observedRows_) {
      Observe(row, rows);
    } else if (scale_ != 0) {
      Correct(row, rows);
    }
  }
  void TransposeTile(int row, int x, float* columns) const {
    const float* rows[kTile];
    for (int i = 0; i < kTile; ++i) {
      rows[i] = estimate_.Row(std::min(row + i, Height() - 1)) + x;
      Prefetch(rows[i] + kAhead, kTile);
    }
    ChosenDeconvolutionKernels().transposeFloats(rows, columns);
  }
  void CopyColumn(int row, int x, float* column) const {
    for (int i = 0; i < kTile; ++i) column[i] = estimate_.At(x, std::min(row + i, Height() - 1));
  }
  void Finish(int row, int x, int count, const float* sums, float normalizer, double* energy) {
    const std::size_t start = static_cast<std::size_t>(row) * Width() + x;
    float* results = (weighted_ ? blurred_.data() : estimate_.values) + start;
    Prefetch(observed_.data() + start + kAhead, kSegment);
    Prefetch(results + kAhead, kSegment);
    const DeconvolutionKernels& kernels = ChosenDeconvolutionKernels();
    OnWholeSegment(observed_.data() + start, results, count, [&](const float* observed, float* target) {
      if (weighted_) {
        kernels.keepBlurred(sums, normalizer, observed, target, energy, largest_);
      } else {
        kernels.raiseFloats(sums, normalizer, observed, target, energy);
      }
    });
  }
  void EndIteration() {
    const float brightest = *std::max_element(largest_, largest_ + kTile);
    scale_ = brightest > 0 ? 1.57 / brightest : 0;
    std::fill_n(largest_, kTile, 0.0f);
  }
  void EndRun() { Prepare(0, Height()); }
  void Restore() {
    std::copy_n(observed_.data(), static_cast<std::size_t>(observedRows_) * Width(), estimate_.values);
  }

 private:
  void Observe(int row, int rows) {
    const std::size_t start = static_cast<std::size_t>(row) * Width();
    const std::size_t end = start + static_cast<std::size_t>(rows) * Width();
    for (std::size_t i = start; i < end; ++i) {
      const float v = estimate_.values[i];
      observed_[i] = v;
      estimate_.values[i] = v == v ? v : 0.0f;
    }
    observedRows_ = row + rows;
  }
  void Correct(int row, int rows) {
    const std::size_t start = static_cast<std::size_t>(row) * Width();
    const std::size_t end = start + static_cast<std::size_t>(rows) * Width();
    for (std::size_t i = start; i < end; i += kSegment) {
      const int count = static_cast<int>(std::min<std::size_t>(kSegment, end - i));
      float blurred[kSegment] = {};
      const float* source = blurred_.data() + i;
      if (count < kSegment) source = std::copy_n(source, count, blurred) - count;
      OnWholeSegment(observed_.data() + i, estimate_.values + i, count,
                     [&](const float* observed, float* estimate) {
                       ChosenDeconvolutionKernels().correctFloats(source, scale_, observed, estimate);
                     });
    }
  }

  FloatView estimate_;
  PixelBuffer<float> observed_;
  int observedRows_ = 0;
  PixelBuffer<float> blurred_;
  bool weighted_;
  float largest_[kTile] = {};
  double scale_ = 0;  // of the correction that waits; 0 is none
};

template <class Form>
bool Iterate(Form& form, float radius, IterationWatch& watch) {
  const PointSpread spread = GaussianPointSpread(radius);
  BandBlur<Form> blur(form, spread);
  double firstEnergy = 1;
  float lastError = 0;
  for (int iteration = 1; iteration <= Form::kMostIterations; ++iteration) {
    double energy = 0;
    if (!blur.Run(watch, energy)) return form.Restore(), false;
    form.EndIteration();
    if (iteration == 1 && energy != 0) firstEnergy = energy;
    const float error = static_cast<float>(100.0 * energy / firstEnergy);
    if (!watch.Iteration(iteration, error)) return form.Restore(), false;
    if (iteration >= 2 && lastError - error < Form::kLeastGain) break;
    lastError = error;
  }
  form.EndRun();
  return true;
}

}  // namespace

PointSpread GaussianPointSpread(float radius) {
  const float sigma = radius * 0.8493218f;
  const float peak = 1.0f / (sigma * 2.506628f);
  const float decay = 1.0f / (2.0f * (sigma * sigma));
  PointSpread spread;
  spread.halfWidth = static_cast<int>(3.0f * sigma) + 1;
  float sum = 0;
  for (int j = -spread.halfWidth; j <= spread.halfWidth; ++j) {
    const float power = -decay * static_cast<float>(j * j);
    const float weight = peak * static_cast<float>(Exponential(power));
    spread.kernel.push_back(weight);
    sum += weight;
  }
  spread.normalizer = sum * sum;
  return spread;
}

bool DeconvolveDisplay(GrayView image, float radius, Restoration mode, IterationWatch& watch) {
  DisplayForm form(image, mode);
  return Iterate(form, radius, watch);
}

bool Deconv16(FloatView image, float radius, Restoration mode, IterationWatch& watch) {
  DataForm form(image, mode);
  return Iterate(form, radius, watch);
}

}  // namespace corvane
