#pragma once

#include <cstddef>
#include <cstring>
#include <memory>

#include "base/pixel_buffer.h"

namespace corvane {

// Rows of floats, top row first, no padding between them: what kernels take.
struct ConstFloatView {
  const float* values = nullptr;
  int width = 0;
  int height = 0;
  const float* Row(int y) const { return values + static_cast<std::size_t>(y) * width; }
  float At(int x, int y) const { return Row(y)[x]; }
  std::size_t Count() const { return static_cast<std::size_t>(width) * height; }
};
struct FloatView {
  float* values = nullptr;
  int width = 0;
  int height = 0;
  float* Row(int y) const { return values + static_cast<std::size_t>(y) * width; }
  float& At(int x, int y) const { return Row(y)[x]; }
  std::size_t Count() const { return static_cast<std::size_t>(width) * height; }
  operator ConstFloatView() const { return {values, width, height}; }
};

// An array of physical values, row 0 the top line of the picture. Copies share their values until one of them
// is edited, so a slot and the working state hold one array in memory.
class FloatImage {
 public:
  FloatImage() = default;
  // Values unspecified. Throws std::bad_alloc.
  FloatImage(int width, int height)
      : values_(std::make_shared<PixelBuffer<float>>(static_cast<std::size_t>(width) * height)),
        width_(width),
        height_(height) {}

  int Width() const { return width_; }
  int Height() const { return height_; }
  bool Empty() const { return values_ == nullptr; }
  std::size_t Count() const { return static_cast<std::size_t>(width_) * height_; }
  ConstFloatView View() const {
    return Empty() ? ConstFloatView{} : ConstFloatView{values_->data(), width_, height_};
  }

  // Whether these two hold one array, and nobody else does.
  bool SharesOnlyWith(const FloatImage& other) const {
    return !Empty() && values_ == other.values_ && values_.use_count() == 2;
  }

  // The values for reading and writing, this image's own from now on.
  FloatView Edit() {
    if (!Empty() && values_.use_count() > 1) {
      auto own = std::make_shared<PixelBuffer<float>>(values_->size());
      std::memcpy(own->data(), values_->data(), values_->size() * sizeof(float));
      values_ = std::move(own);
    }
    return Empty() ? FloatView{} : FloatView{values_->data(), width_, height_};
  }

  // For writing every value: like Edit, but nothing is copied and the values are unspecified before.
  FloatView Overwrite() {
    if (!Empty() && values_.use_count() > 1) values_ = std::make_shared<PixelBuffer<float>>(values_->size());
    return Empty() ? FloatView{} : FloatView{values_->data(), width_, height_};
  }

 private:
  std::shared_ptr<PixelBuffer<float>> values_;
  int width_ = 0;
  int height_ = 0;
};

}  // namespace corvane
