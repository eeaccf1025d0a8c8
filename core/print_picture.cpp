#include "core/print_picture.h"

#include "base/page_fit.h"
#include "core/slot_picture.h"

namespace corvane {

void PrintPicture(ModCV& cv, Platform& os, const std::filesystem::path& picture,
                  const std::string& documentName) {
  if (picture == cv.SlotBitmap(cv.CurrentSlot) && !EnsureSlotPicture(cv, os, cv.CurrentSlot)) return;
  const std::unique_ptr<PrintJob> job = os.Print(documentName);
  if (!job) return;
  const PagePlace place = FitOnPage(cv.ImageWidth, cv.ImageHeight, job->PageWidth(), job->PageHeight());
  cv.PrintScale = place.scale;
  cv.PrintLeft = place.left;
  cv.PrintTop = place.top;
  job->Picture(picture, place.left, place.top, cv.ImageWidth / place.scale, cv.ImageHeight / place.scale);
  if (const int error = job->End())
    os.Message("The picture could not be printed. Error Number " + std::to_string(error), "PRINT ERROR");
}

}  // namespace corvane
