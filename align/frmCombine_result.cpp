#include <algorithm>
#include <cmath>
#include <functional>

#include "align/combine.h"
#include "align/frmCombine.h"
#include "base/files.h"
#include "base/multiplier.h"
#include "core/accepted.h"
#include "core/slot_picture.h"
#include "core/working_files.h"
#include "formats/sixteen_range.h"
#include "platform/busy.h"

namespace corvane {

std::filesystem::path frmCombine::ResultFile() const { return cv.AppDir / kTempBitmap; }

bool frmCombine::LoadPicture(int slot, DisplayBitmap& picture) {
  if (!LoadSlotPicture(cv, os, slot)) return false;
  picture.width = cv.Width();
  picture.height = cv.Height();
  picture.stride = cv.RowStride;
  picture.bits.Swap(cv.DisplayBits);
  return true;
}

bool frmCombine::Compatibility(DisplayBitmap& first, DisplayBitmap& second) {
  {
    const Busy busy(os);
    if (!LoadPicture(first_.Slot(), first) || !LoadPicture(second_.Slot(), second)) return false;
  }
  if (first.width == second.width && first.height == second.height) return true;
  const Answer answer = os.Message(
      "The images can not be combined unless they are the same size!\n"
      "Do you want to switch to the size and alignment program?",
      "SIZE ERROR", Buttons::YesNoCancel);
  if (answer == Answer::Yes) SwitchTo(Window::Align);
  return false;
}

bool frmCombine::TakeMultipliers(Result& result) {
  const std::pair<MultiplierBox*, float*> multipliers[] = {{first_.multiplier, &result.m1},
                                                           {second_.multiplier, &result.m2}};
  for (const auto& [box, value] : multipliers) {
    *value = std::fabs(ParseMultiplier(box->Text()));
    box->Show(*value);
  }
  for (const auto& [box, value] : multipliers) {
    if (*value >= kSmallestMultiplier) continue;
    os.Message("The minimum multiplier is 0.05 !", "ENTRY ERROR");
    return box->ReturnToLimit(kSmallestMultiplier), false;
  }
  for (const auto& [box, value] : multipliers) {
    if (*value <= kLargestMultiplier) continue;
    os.Message("The maximum multiplier is 2 !", "ENTRY ERROR");
    return box->ReturnToLimit(kLargestMultiplier), false;
  }
  return true;
}

void frmCombine::TakeInputs(Result& result) const {
  const int slot1 = first_.Slot();
  const int slot2 = second_.Slot();
  const int precision = SlotPrecision(cv, slot1, cv.Width(), cv.Height());
  if (precision == SlotPrecision(cv, slot2, cv.Width(), cv.Height())) result.precision = precision;
  result.data1 = cv.SlotData[slot1];
  result.data2 = cv.SlotData[slot2];
  result.originalFiles = cv.SlotName[slot1] + ",  " + cv.SlotName[slot2];
  result.inputs = {std::max(slot1, slot2)};
  if (slot1 != slot2) result.inputs.push_back(std::min(slot1, slot2));
}

void frmCombine::cmdCombine_Click() {
  DisplayBitmap first;
  DisplayBitmap second;
  if (cv.ImageCount == 0 || !Compatibility(first, second)) return;
  Result result;
  result.method = methods_->checkedId();
  if (!TakeMultipliers(result)) return;
  if (result.method < 0) {
    os.Message("One of the Methods must be selected first.", "METHOD ERROR");
    return;
  }
  const Busy busy(os);
  CombineMethods()[result.method].display(first.View(), second.View(), result.m1, result.m2, first.View());
  cv.DisplayBits.Swap(first.bits);
  if (!Accepted(os, WriteWorkingBitmap(cv, cv.AppDir / kGrayTemplate, ResultFile(), cv.Display()))) return;
  if (!Image3->LoadFile(ResultFile())) return Refuse(os, NotEnoughMemory());
  TakeInputs(result);
  result_ = std::move(result);
  Enter();
  cmdSave->setFocus();
}

void frmCombine::cmdUndo_Click() {
  QuietDelete(ResultFile());
  result_.reset();
  Image3->ShowNothing();
  Enter();
  cmdCombine->setFocus();
}

FloatImage frmCombine::SixteenBitSave() const {
  const FloatImage first = IntoSixteenBitRange(result_->data1, result_->precision).values;
  const FloatImage second = IntoSixteenBitRange(result_->data2, result_->precision).values;
  FloatImage combined(first.Width(), first.Height());
  CombineMethods()[result_->method].data(first.View(), second.View(), result_->m1, result_->m2,
                                         combined.Overwrite());
  return combined;
}

void frmCombine::cmdSave_Click() {
  const Run run(*this);
  const bool stacks = ComboMode == kStacker;
  if (!stacks && !RoomForResult()) return;
  const auto target = AskSaveFile(cv, os, SaveRequest(cv, stacks ? "Save Combined Image As..." : "Save As"));
  if (!target) return;
  // With ten images open the last place is free once an input is closed.
  const ImageSave save{.path = target->path,
                       .slot = std::min(cv.ImageCount, kSlots - 1),
                       .picture = ResultFile(),
                       .precision = result_->precision};
  if (!WriteResult(save, target->kind)) return;
  const int before = cv.ImageCount;
  const bool isTaken = TakeResult(save);
  if (isTaken) {
    result_.reset();
    Image3->ShowNothing();
  }
  if (isTaken || cv.ImageCount != before) ListImages();
}

bool frmCombine::WriteResult(const ImageSave& save, ImageKind kind) {
  if (!Accepted(os, LoadDisplayBits(cv, ResultFile()))) return false;
  if (kind == ImageKind::Bitmap) return WriteBitmapFile(cv, os, save);
  cv.OriginalFiles = result_->originalFiles;
  return WriteFitsFile(cv, os, desk, save, [this] { return SixteenBitSave(); });
}

bool frmCombine::TakeResult(const ImageSave& save) {
  const bool stacks = ComboMode == kStacker;
  if (cv.ImageCount == kSlots && !ImageCloserStackMode()) return false;
  if (!CommitSave(cv, os, save)) return false;
  while (stacks && !result_->inputs.empty() && ImageCloserStackMode()) {
  }
  return true;
}

bool frmCombine::ImageCloserStackMode() {
  cv.CurrentSlot = result_->inputs.front();
  cv.CurrentName = cv.SlotName[cv.CurrentSlot];
  if (!CloseImage(cv, os)) return false;
  result_->inputs.erase(result_->inputs.begin());
  return true;
}

}  // namespace corvane
