#include <new>
#include <utility>

#include "base/files.h"
#include "base/numeric.h"
#include "core/accepted.h"
#include "core/read_out.h"
#include "core/slot_picture.h"
#include "core/working_files.h"
#include "luminance/frmSave16.h"
#include "platform/busy.h"
#include "viewer/frmExamine.h"
#include "viewer/magnify.h"

namespace corvane {
namespace {

constexpr char kToolMenu[] = "mnuToolSel";
constexpr char kBroken[] = "The picture of this image is missing.";
constexpr char kDarkHint[] =
    "A very dark picture: Luminance Scaling, Logarithmic Scale, brings out faint detail";

}  // namespace

const ViewEntry* frmExamine::CheckedView() const {
  for (const ViewEntry& view : ViewTable())
    if (Item(kToolMenu, view.menuIndex)->isChecked()) return &view;
  return nullptr;
}

void frmExamine::UncheckViews() {
  for (const ViewEntry& view : ViewTable()) Item(kToolMenu, view.menuIndex)->setChecked(false);
}

std::filesystem::path frmExamine::ShownFile() const {
  if (ViewChanged) return cv.AppDir / kDummyBitmap;
  if (Magnification != 1) return cv.AppDir / kExpandBitmap;
  return cv.SlotBitmap(cv.CurrentSlot);
}

void frmExamine::ShowImage(int slot) {
  marking_->ClearReadout();
  UncheckViews();
  cv.CurrentSlot = slot;
  cv.CurrentName = cv.SlotName[slot];
  ShowSlotPicture();
}

void frmExamine::ClearCheck() {
  const ViewEntry* view = CheckedView();
  UncheckViews();
  if (cv.ImageCount > 0 && (ViewChanged || Magnification != 1)) ShowSlotPicture();
  if (view && view->transposes) area_->SizeCheck();  // also where it is square: nothing is in its place
}

void frmExamine::EndView() {
  Magnification = 1;
  ViewChanged = false;
  QuietDelete(cv.AppDir / kDummyBitmap);
}

bool frmExamine::ShowSlotPicture() {
  const QSize before = area_->Picture()->PictureSize();
  const Mark mark = SlotPixel(marking_->Marker());
  EndView();
  const Busy busy(os);
  if (!LoadSlotPicture(cv, os, cv.CurrentSlot)) {
    ShowNothing(kBroken);
    return false;
  }
  slotWidth_ = cv.Width();
  slotHeight_ = cv.Height();
  if (marking_->MarkerMode() && before != QSize(slotWidth_, slotHeight_)) {
    // No longer magnified, unless it is the magnified picture that was saved.
    cv.MarkX = static_cast<float>(mark.x);
    cv.MarkY = static_cast<float>(mark.y);
  }
  return ShowFile(cv.SlotBitmap(cv.CurrentSlot));
}

bool frmExamine::ShowFile(const std::filesystem::path& path) {
  if (!area_->LoadPicture(path)) {
    os.Message("The file \"" + path.filename().string() + "\" can't be shown.", "FILE OPEN ERROR");
    ShowNothing(kBroken);
    return false;
  }
  txbWidth->setText(QString::number(cv.Width()));
  txbHeight->setText(QString::number(cv.Height()));
  hint_ = IsMostlyDark(cv.Display()) ? kDarkHint : "";
  marking_->ClearReadout();
  area_->Picture()->setCursor(Qt::CrossCursor);
  marking_->Redraw();  // this picture may be smaller
  Enter();
  return true;
}

void frmExamine::ShowNothing(const char* reason) {
  marking_->Free();
  EndView();
  UncheckViews();
  cv.DisplayBits = {};
  DescribeDisplayBitmap(cv, 0, 0);
  hint_.clear();
  area_->ShowEmpty(QLatin1String(reason));
  txbWidth->clear();
  txbHeight->clear();
  marking_->ClearReadout();
  Enter();
}

void frmExamine::ReadShown() {
  if (!area_->Picture()->HasPicture()) return;
  if (LoadDisplayBits(cv, ShownFile())) ShowImage(cv.CurrentSlot);
}

void frmExamine::ToggleView(int index) {
  for (const ViewEntry& view : ViewTable()) {
    if (view.menuIndex != index) continue;
    const bool wasChecked = Item(kToolMenu, index)->isChecked();
    ClearCheck();
    if (wasChecked || !area_->Picture()->HasPicture()) return;
    if (!EnsureSlotPicture(cv, os, cv.CurrentSlot)) return ShowNothing(kBroken);
    view.deconvolves ? Deconvolve(view) : ShowView(view);
  }
}

void frmExamine::ShowView(const ViewEntry& view) try {
  const Busy busy(os);
  const ConstGrayView source = cv.Display();
  DisplayBitmap picture(view.transposes ? source.height : source.width,
                        view.transposes ? source.width : source.height);
  view.display(cv, source, picture.View());
  const std::filesystem::path dummy = cv.AppDir / kDummyBitmap;
  if (!MakePicture(view.header(cv), dummy, std::move(picture))) return;
  ViewChanged = true;
  Item(kToolMenu, view.menuIndex)->setChecked(true);
  if (ShowFile(dummy) && view.transposes)
    area_->SizeCheck();  // also where it is square: nothing is in its place
} catch (const std::bad_alloc&) {
  Refuse(os, NotEnoughMemory());
}

void frmExamine::Deconvolve(const ViewEntry& view) {
  const Run run(*this);
  const std::filesystem::path dummy = cv.AppDir / kDummyBitmap;
  if (!WritePicture(view.header(cv), dummy, cv.Display())) return;
  QAction* item = Item(kToolMenu, view.menuIndex);
  item->setChecked(true);
  cv.DeconvCancelled = false;
  desk.ShowModal(Dialog::Deconvolution);
  if (std::exchange(cv.DeconvCancelled, false)) {
    // DisplayBits are as before, and the slot's picture has been on screen all the time.
    item->setChecked(false);
    return EndView();
  }
  const Busy busy(os);
  if (!WritePicture(view.header(cv), dummy, cv.Display())) {
    UncheckViews();
    ShowSlotPicture();
    return;
  }
  ViewChanged = true;
  ShowFile(dummy);
}

void frmExamine::Deconv16() {
  frmSave16 progress(os, this);
  const Restoration mode = cv.DeconvStandard ? Restoration::Standard : Restoration::DeepSky;
  corvane::Deconv16(cv.ImageData.Edit(), cv.DeconvRadius, mode, progress);
}

bool frmExamine::MakePicture(const std::filesystem::path& header, const std::filesystem::path& target,
                             DisplayBitmap picture) {
  if (!WritePicture(header, target, picture.View())) return false;
  cv.DisplayBits = std::move(picture.bits);
  DescribeDisplayBitmap(cv, picture.width, picture.height);
  return true;
}

bool frmExamine::WritePicture(const std::filesystem::path& header, const std::filesystem::path& target,
                              ConstGrayView picture) {
  return Accepted(os, WriteWorkingBitmap(cv, header, target, picture));
}

void frmExamine::ReSizeImage(int direction) try {
  const int factor = RoundEven(Magnification) + direction;
  if (cv.ImageCount == 0 || factor < 1 || factor > kMostMagnified) return;
  const QPoint seen = area_->Middle();
  const Mark middle = SlotPixel(marking_->MarkerMode() ? marking_->Marker() : Mark{seen.x(), seen.y()});
  marking_->ClearReadout();
  if (ViewChanged || factor == 1) ClearCheck();
  if (!area_->Picture()->HasPicture()) return;
  if (factor == 1) return ShowInMiddle(middle);
  if (!CanMagnify(slotWidth_, slotHeight_, factor)) {
    os.Message("The enlarged image must be less than 10 MB.", "MAXIMUM SIZE LIMIT");
    return;
  }
  const Busy busy(os);
  if (!LoadSlotPicture(cv, os, cv.CurrentSlot)) return ShowNothing(kBroken);
  DisplayBitmap picture(slotWidth_ * factor, slotHeight_ * factor);
  if (cv.MagMode == 0)
    Replicate(cv.Display(), factor, picture.View());
  else
    Interpolate(cv.Display(), factor, picture.View());
  const std::filesystem::path expand = cv.AppDir / kExpandBitmap;
  if (!MakePicture(cv.AppDir / kGrayTemplate, expand, std::move(picture))) {
    ShowSlotPicture();
    return;
  }
  Magnification = static_cast<float>(factor);
  shownMagMode_ = cv.MagMode;
  if (ShowFile(expand)) ShowInMiddle(middle);
} catch (const std::bad_alloc&) {
  Refuse(os, NotEnoughMemory());
  ShowSlotPicture();
}

void frmExamine::ShowInMiddle(Mark slotPixel) {
  const int factor = RoundEven(Magnification);
  const QPoint shown(slotPixel.x * factor, slotPixel.y * factor);
  if (marking_->MarkerMode()) marking_->Place({shown.x(), shown.y()});
  area_->ShowInMiddle(shown + QPoint(factor / 2, factor / 2));
  marking_->ClearReadout();
}

void frmExamine::Magnify16() {
  const ConstFloatView values = cv.ImageData.View();
  const int factor = RoundEven(Magnification);
  cv.ImageData = shownMagMode_ == 0 ? Replicate(values, factor) : Interpolate(values, factor);
}

bool frmExamine::KeepView() {
  if (cv.ImageCount == 0 || (!ViewChanged && Magnification == 1)) return true;
  return KeepPicture(cv, os, ShownFile());
}

void frmExamine::Leave(Window next) {
  if (KeepView()) SwitchTo(next);
}

Mark frmExamine::SlotPixel(Mark shown) const {
  if (const ViewEntry* view = CheckedView()) return view->source(shown, slotWidth_, slotHeight_);
  const int factor = RoundEven(Magnification);
  return {shown.x / factor, shown.y / factor};
}

}  // namespace corvane
