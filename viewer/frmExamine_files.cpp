#include <QDragEnterEvent>
#include <QMimeData>
#include <QUrl>

#include "core/fits_writer.h"
#include "core/open_image.h"
#include "core/save_image.h"
#include "core/slot_picture.h"
#include "platform/QtText.h"
#include "viewer/frmExamine.h"
#include "viewer/page_fit.h"

namespace corvane {
namespace {

std::vector<std::filesystem::path> LocalFiles(const QMimeData& dropped) {
  std::vector<std::filesystem::path> files;
  for (const QUrl& url : dropped.urls())
    if (url.isLocalFile()) files.push_back(ToPath(url.toLocalFile()));
  return files;
}

}  // namespace

void frmExamine::OpenFile() {
  cv.OpenPath.clear();
  TakeOpened(OpenImage(cv, os, OpenRequest(cv, "File to View")));
}

void frmExamine::TakeOpened(std::optional<int> slot) {
  if (slot) {
    SuppressListClick = true;
    Combo1->insertItem(*slot, ToQt(cv.SlotName[*slot]));
    SuppressListClick = false;
    SelectEntry(*slot);
    ShowImage(*slot);
    return;
  }
  // Nothing has been read of no file, after a cancelled dialog, nor of one that can't be an image.
  const bool wasRead = KindOf(cv.OpenPath.filename().string()) != ImageKind::Unknown;
  if (wasRead && cv.ImageCount > 0) ShowImage(cv.CurrentSlot);
}

void frmExamine::dragEnterEvent(QDragEnterEvent* event) {
  if (!Running() && !LocalFiles(*event->mimeData()).empty()) event->acceptProposedAction();
}

void frmExamine::dropEvent(QDropEvent* event) {
  event->acceptProposedAction();
  // Later, so that the program the files come from does not wait for our message boxes.
  QMetaObject::invokeMethod(
      this, [this, files = LocalFiles(*event->mimeData())] { OpenDropped(files); }, Qt::QueuedConnection);
}

void frmExamine::OpenDropped(const std::vector<std::filesystem::path>& files) {
  if (Running()) return;
  for (const std::filesystem::path& file : files) {
    const bool full = cv.ImageCount >= kSlots;
    cv.OpenPath.clear();
    TakeOpened(OpenImageFile(cv, os, file));
    if (full) return;  // said once
  }
}

void frmExamine::CloseFile() {
  if (cv.ImageCount == 0) return;
  UncheckViews();
  ClearReadout();
  ImageCloser();
  if (cv.ImageCount > 0) {
    SelectEntry(cv.CurrentSlot);
    return ShowImage(cv.CurrentSlot);
  }
  ListSlot = -1;
  ShowNothing(kNoImage);
}

void frmExamine::ImageCloser() {
  if (cv.ImageCount < 1) return;
  const int closed = cv.CurrentSlot;
  CloseImage(cv);
  cv.ImageData = {};
  SuppressListClick = true;
  Combo1->removeItem(closed);
  SuppressListClick = false;
  Magnification = 1;
}

void frmExamine::SaveImage() {
  const Run run(*this);
  const auto target = AskSaveFile(cv, os, SaveRequest(cv, "Save Image As..."));
  if (!target) return;
  const bool asFits = target->kind == ImageKind::Fits;
  const ViewEntry* view = CheckedView();
  const std::filesystem::path shown = ShownFile();
  if (!(asFits ? SaveAsFits(target->path) : SaveBitmap(cv, os, shown, target->path))) return;
  // The file has no colours, so the slot keeps its gray picture: the levels are the same.
  const bool grayOnly = asFits && view && view->isColor;
  const int slot = cv.CurrentSlot;
  if (!CommitSave(cv, os, slot, target->path, grayOnly ? cv.SlotBitmap(slot) : shown)) return;
  Combo1->setItemText(slot, ToQt(cv.SlotName[slot]));
  ShowImage(slot);
}

bool frmExamine::SaveAsFits(const std::filesystem::path& path) {
  const ViewEntry* view = CheckedView();
  if (view && view->isColor)
    os.Message("A colored image can't be saved in FITS format, so the image will be grayscale.",
               "FITS Limitation");
  const bool eightBitView = view && !view->data && !view->deconvolves;
  const int code = eightBitView ? 1 : SlotPrecision(cv, cv.CurrentSlot, slotWidth_, slotHeight_);
  return SaveFits(cv, os, desk, path, code, [this, view, code] {
    return SixteenBitSave(cv, code, [this, view] {
      if (view && view->deconvolves) Deconv16();
      if (view && view->data) view->data(cv.ImageData);
      if (Magnification != 1) Magnify16();
      return true;
    });
  });
}

void frmExamine::PrintImage() {
  if (ShownFile() == cv.SlotBitmap(cv.CurrentSlot) && !EnsureSlotPicture(cv, os, cv.CurrentSlot)) return;
  const std::unique_ptr<PrintJob> job = os.Print(cv.CurrentName);
  if (!job) return;
  const auto width = static_cast<float>(area_->Picture()->width());
  const auto height = static_cast<float>(area_->Picture()->height());
  const PagePlace place = FitOnPage(width, height, job->PageWidth(), job->PageHeight());
  cv.PrintScale = place.scale;
  cv.PrintLeft = place.left;
  cv.PrintTop = place.top;
  job->Picture(ShownFile(), place.left, place.top, width / place.scale, height / place.scale);
  if (!job->End()) os.Message("The picture could not be printed.", "PRINT ERROR");
}

}  // namespace corvane
