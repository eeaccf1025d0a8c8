#include <utility>

#include "align/frmAlign.h"
#include "core/open_image.h"
#include "core/slot_picture.h"

namespace corvane {
namespace {

constexpr char kSaveTitle[] = "Save Displayed Image As ...";

}  // namespace

std::vector<MarkedSlot> frmAlign::MarkedSlots() const {
  std::vector<MarkedSlot> marked;
  for (int slot = 0; slot < cv.ImageCount; ++slot)
    if (Marks[slot]) marked.push_back({slot, *Marks[slot]});
  return marked;
}

void frmAlign::cmdAlign_Click() {
  if (MarkedSlots().size() < 2) return;
  AlignedUnsaved = AlignMode == kCropMode ? AlignCrops() : AlignMosaic();
  if (AlignedUnsaved) return ShowSlot(cv.CurrentSlot);
  // The images are as before, and a message has said why.
  if (LoadDisplayBits(cv, cv.SlotBitmap(cv.CurrentSlot))) ShowBroken();
}

bool frmAlign::AlignCrops() {
  cropped_ = CropSlots(cv, os, MarkedSlots());
  if (cropped_.empty()) return false;
  for (const CroppedSlot& cropped : cropped_) Combo1->Rename(cropped.slot, cv.SlotName[cropped.slot]);
  cv.CurrentSlot = cropped_.back().slot;
  return true;
}

bool frmAlign::AlignMosaic() {
  if (!AddMosaic(cv, os, MarkedSlots())) return false;
  Combo1->Insert(cv.CurrentSlot, cv.SlotName[cv.CurrentSlot]);
  return true;
}

void frmAlign::cmdCancel_Click() {
  if (AlignMode == kCropMode) {
    UndoCrops();
  } else {
    RemoveMosaic(cv);
    Combo1->Remove(cv.ImageCount);
  }
  cv.CurrentSlot = cv.ImageCount - 1;
  Finish();
  Combo1->setFocus();
}

void frmAlign::UndoCrops() {
  for (CroppedSlot& cropped : cropped_) {
    const int slot = cropped.slot;
    UndoCrop(cv, os, std::move(cropped));
    Combo1->Rename(slot, cv.SlotName[slot]);
  }
}

void frmAlign::cmdSave_Click() {
  const Run run(*this);
  if (!RoomForOneMore(cv, os)) return;
  const bool isDone = AlignMode == kCropMode ? SaveCrops() : SaveMosaicAs();
  if (isDone) Finish();
}

bool frmAlign::SaveCrops() {
  bool isOneLost = false;
  for (auto next = cropped_.begin(); next != cropped_.end();) {
    ShowSlot(next->slot);
    if (!area_->Picture()->HasPicture()) {
      isOneLost = true;  // Undo can bring it back
      ++next;
      continue;
    }
    const SaveChoice choice = ChooseSaveFile(cv, os, SaveRequest(cv, kSaveTitle));
    if (choice.outcome == SaveChoice::Outcome::Refused) return false;
    if (choice.outcome == SaveChoice::Outcome::Cancelled) {
      ++next;
      continue;
    }
    if (!SaveCrop(cv, os, desk, *next, choice.target)) return false;
    Combo1->Rename(next->slot, cv.SlotName[next->slot]);
    next = cropped_.erase(next);
  }
  if (isOneLost) return false;
  for (CroppedSlot& passedOver : cropped_) KeepCrop(cv, std::move(passedOver));
  return true;
}

bool frmAlign::SaveMosaicAs() {
  const int slot = cv.ImageCount - 1;
  ShowSlot(slot);
  if (!area_->Picture()->HasPicture()) return false;
  const auto target = AskSaveFile(cv, os, SaveRequest(cv, kSaveTitle));
  if (!target || !SaveMosaic(cv, os, desk, MarkedSlots(), *target)) return false;
  Combo1->Rename(slot, cv.SlotName[slot]);
  return true;
}

void frmAlign::Finish() {
  cropped_.clear();
  Marks.fill(std::nullopt);
  AlignedUnsaved = false;
  ShowSlot(cv.CurrentSlot);
}

}  // namespace corvane
