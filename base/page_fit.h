#pragma once

namespace corvane {

// Place of a picture on a printed page: it stands at (left, top), its size divided by `scale`.
struct PagePlace {
  float scale = 1;
  float left = 0;
  float top = 0;
};

// A picture larger than the page is reduced to fill it in the limiting direction, another keeps its size;
// what remains of the page is shared evenly between both sides. All lengths in the same unit, above 0.
PagePlace FitOnPage(float width, float height, float pageWidth, float pageHeight);

}  // namespace corvane
