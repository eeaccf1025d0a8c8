#include <QDragEnterEvent>
#include <QMimeData>
#include <QUrl>

#include "core/open_image.h"
#include "core/save_image.h"
#include "platform/QtText.h"
#include "viewer/frmExamine.h"

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
    Combo1->Insert(*slot, cv.SlotName[*slot]);
    Combo1->Select(*slot);
    ShowImage(*slot);
    return;
  }
  // After a cancelled dialog, or for a file that can't be an image, nothing was read: the picture is intact.
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
  marking_->ClearReadout();
  ImageCloser();
  if (cv.ImageCount > 0) {
    Combo1->Select(cv.CurrentSlot);
    return ShowImage(cv.CurrentSlot);
  }
  ShowNothing(kNoImage);
}

void frmExamine::ImageCloser() {
  if (cv.ImageCount < 1) return;
  if (CloseImage(cv, os)) cv.ImageData = {};
  Combo1->Fill(cv);
  Magnification = 1;
}

void frmExamine::SaveImage() {
  const Run run(*this);
  const auto target = AskSaveFile(cv, os, SaveRequest(cv, "Save Image As..."));
  if (!target) return;
  const ImageSave save{.path = target->path, .slot = cv.CurrentSlot, .picture = ShownFile()};
  if (!(target->kind == ImageKind::Fits ? SaveAsFits(save) : SaveBitmap(cv, os, save))) return;
  Combo1->Rename(save.slot, cv.SlotName[save.slot]);
  ShowImage(save.slot);
}

bool frmExamine::SaveAsFits(ImageSave save) {
  const ViewEntry* view = CheckedView();
  if (view && view->isColor) {
    os.Message("A colored image can't be saved in FITS format, so the image will be grayscale.",
               "FITS Limitation");
    save.picture = cv.SlotBitmap(save.slot);  // the levels are the same
  }
  const bool eightBitView = view && !view->data && !view->deconvolves;
  if (!eightBitView) save.precision = SlotPrecision(cv, save.slot, slotWidth_, slotHeight_);
  return SaveFits(cv, os, desk, save, [this, view] {
    if (view && view->deconvolves) Deconv16();
    if (view && view->data) view->data(cv.ImageData);
    if (Magnification != 1) Magnify16();
  });
}

}  // namespace corvane
