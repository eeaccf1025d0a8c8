#pragma once

#include <QLabel>
#include <QPushButton>
#include <array>
#include <optional>
#include <vector>

#include "align/alignment.h"
#include "widgets/ImageList.h"
#include "widgets/PictureArea.h"
#include "widgets/PixelMarking.h"
#include "widgets/ToolWindow.h"
#include "widgets/controls.h"

namespace corvane {

// The image aligner: a mark on each of several open images, then all of them cropped to what they share or
// pasted into a mosaic so that the marks coincide. The result waits to be saved or undone; until then the
// window takes no other command than to show an image. DisplayBits are the picture on screen.
class frmAlign : public ToolWindow {
  Q_OBJECT

 public:
  frmAlign(ModCV& store, Platform& platform, Desk& windows);

  void Open() override;

  // Shows the picture of a slot, which becomes the current one, and its mark.
  void ShowSlot(int slot);
  // Draws the mark of the image shown, if it has one, and reads it out.
  void DrawCross();
  // Closes the image shown and takes it out of the list; the marks move with their images.
  void ImageCloser();
  // Moves the marker to the center of the light around it.
  void Center(int radius, int threshold);

 protected:
  void ShowModal(Dialog dialog) override;
  bool MayExit() override;
  void OnUnload() override;

 private:
  enum Mode { kCropMode, kMosaicMode };

  // frmAlign.cpp
  void LayOut();
  void Connect();
  void mnuFileSel_Click(int index);
  void mnuModeSel_Click(int index);
  void SwitchAutoAdjust();
  void OpenFile();
  void CloseFile();
  // Reads the shown picture again, after what has read others into the store.
  void ReadShown();
  // The picture of the image is lost.
  void ShowBroken();
  void ShowNothing(const char* reason);
  void Marked(bool byMouse);
  void Unmark();
  void ShowStatus();
  // Under the pointer, or nothing.
  void Hover(std::optional<Mark> pixel);
  void Enter();

  // frmAlign_modes.cpp
  std::vector<MarkedSlot> MarkedSlots() const;
  void cmdAlign_Click();
  void cmdCancel_Click();
  void cmdSave_Click();
  // Make the result, and leave its slot the current one. False with everything as before.
  bool AlignCrops();
  bool AlignMosaic();
  void UndoCrops();
  // False where the result, or a part of it, still waits to be saved or undone.
  bool SaveCrops();
  bool SaveMosaicAs();
  // Ready for new marks.
  void Finish();

  ImageList* Combo1;
  PictureArea* area_;
  ReadOnlyBox* txbX;
  ReadOnlyBox* txbY;
  ReadOnlyBox* txbXX;
  ReadOnlyBox* txbYY;
  ReadOnlyBox* txbLum;
  QPushButton* cmdAlign;
  QPushButton* cmdCancel;
  QPushButton* cmdSave;
  QLabel* lblStatus;
  PixelMarking* marking_;

  std::array<std::optional<MarkedPicture>, kSlots> Marks;
  Mode AlignMode = kCropMode;
  bool AlignedUnsaved = false;
  std::optional<Mark> hovered_;       // the pixel that is read out
  std::vector<CroppedSlot> cropped_;  // while crops are neither saved nor undone
};

}  // namespace corvane
