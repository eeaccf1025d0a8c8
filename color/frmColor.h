#pragma once

#include <QPushButton>
#include <array>
#include <filesystem>

#include "base/display_bitmap.h"
#include "widgets/ImageList.h"
#include "widgets/MultiplierBox.h"
#include "widgets/PictureArea.h"
#include "widgets/ToolWindow.h"

namespace corvane {

// The RGB composite: one picture in color from the display bitmaps of three open images. It is in "temp.bmp"
// and on screen until it is saved or undone; it never becomes an open image.
class frmColor : public ToolWindow {
  Q_OBJECT

 public:
  frmColor(ModCV& store, Platform& platform, Desk& windows);

  void Open() override;

 protected:
  bool MayExit() override;
  void OnUnload() override;

 private:
  enum Channel { kRed, kGreen, kBlue, kColors };
  struct Source {
    ImageList* list;  // the slot of the color is the place chosen here
    MultiplierBox* multiplier;
  };
  using Pictures = std::array<DisplayBitmap, kColors>;

  void LayOut();
  void mnuFileSel_Click(int index);
  void Enter(bool isComposite);

  void ShowImage(int slot);
  void ShowNothing(const char* reason);
  void OpenFile();
  void ImageCloser();
  void PrintImage();

  void Combine();
  void Undo();
  void Save();

  // Asks where not all three images are different.
  bool AreMeant();
  // The pictures of the sources; the working state stays as it is. False after a message.
  bool ReadSources(Pictures& pictures);
  static bool Compatibility(const Pictures& pictures);
  // False after a message, with the box at the limit that its number has passed.
  bool ReadMultiplier(Channel color, float& multiplier);
  void MakeComposite(const Pictures& pictures);
  void ShowComposite();
  std::filesystem::path CompositeFile() const;

  std::array<Source, kColors> sources_;
  PictureArea* area_;
  QPushButton* cmdCombine;
  QPushButton* cmdCancel;
  QPushButton* cmdSave;
  int ShownSlot = 0;  // shown again when the composite goes
  bool ColorUnsaved = false;
};

}  // namespace corvane
