#pragma once

namespace corvane {

// The magnifier's picture measures `width` + 1 by `height` + 1 pixels, but is never higher than 171.
struct MagnifierBox {
  int width = 0;
  int height = 0;
  int PixelWidth() const { return width + 1; }
  int PixelHeight() const { return height < kMostHeight ? height + 1 : kMostHeight; }

  static constexpr int kMostWidth = 228;
  static constexpr int kMostHeight = 171;
};

// The box for an image of this size: never more than the image, and of a wide image's own proportions.
MagnifierBox MagScale(int imageWidth, int imageHeight);

// The largest scroll value along one side of the image, for a box side of MagnifierBox.
int MagnifierScrollMaximum(int imageLength, int boxLength, int factor);

// How many magnified pixels stand before the first visible one, for a scroll value in image pixels and the
// box side in pixels. The last visible pixel is the image's last at most.
int MagnifiedOffset(int scrollValue, int imageLength, int boxPixels, int factor);

}  // namespace corvane
