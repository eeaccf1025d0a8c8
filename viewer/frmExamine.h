#pragma once

#include <QLabel>
#include <filesystem>
#include <optional>
#include <vector>

#include "core/save_image.h"
#include "viewer/view_table.h"
#include "widgets/ImageList.h"
#include "widgets/PictureArea.h"
#include "widgets/PixelMarking.h"
#include "widgets/ToolWindow.h"
#include "widgets/controls.h"

namespace corvane {

// The viewer: opens, lists, shows, closes, saves and prints images, and leads to every tool. While an image
// is open DisplayBits and the size fields describe the picture on screen.
class frmExamine : public ToolWindow {
  Q_OBJECT

 public:
  frmExamine(ModCV& store, Platform& platform, Desk& windows);

  void Open() override;

  // Shows the picture of a slot, which becomes the current one, without view, magnification or read-out.
  void ShowImage(int slot);
  // Switches the view off and shows the slot's own picture at its own size.
  void ClearCheck();
  // Closes the current image and takes it out of the list.
  void ImageCloser();
  // Magnifies the slot's picture by one step more (1) or less (-1).
  void ReSizeImage(int direction);
  // Enlarges ImageData as the picture on screen is enlarged.
  void Magnify16();
  // Deconvolves ImageData, with the "Saving..." window on screen.
  void Deconv16();

 protected:
  void Leave(Window next) override;
  void ShowModal(Dialog dialog) override;
  void OnUnload() override;
  void CancelRun() override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  static constexpr char kNoImage[] = "No image is open.\n\nFile > Open File, or drop files here.";
  static constexpr int kMostMagnified = 6;

  // frmExamine.cpp
  void LayOut();
  void Connect();
  void mnuFileSel_Click(int index);
  void mnuToolSel_Click(int index);
  void Enter();
  // What the status line says of a pixel of the shown picture, and of the marked one.
  void ShowStatus(Mark pixel);
  void DescribeMarker();

  // frmExamine_files.cpp
  void OpenFile();
  void OpenDropped(const std::vector<std::filesystem::path>& files);
  void TakeOpened(std::optional<int> slot);
  void CloseFile();
  void SaveImage();
  bool SaveAsFits(ImageSave save);

  // frmExamine_views.cpp
  const ViewEntry* CheckedView() const;
  void UncheckViews();
  void ToggleView(int index);
  void ShowView(const ViewEntry& view);
  void Deconvolve(const ViewEntry& view);
  bool MakePicture(const std::filesystem::path& header, const std::filesystem::path& target,
                   DisplayBitmap picture);
  bool WritePicture(const std::filesystem::path& header, const std::filesystem::path& target,
                    ConstGrayView picture);
  // The file of the picture on screen.
  std::filesystem::path ShownFile() const;
  bool ShowFile(const std::filesystem::path& path);
  bool ShowSlotPicture();
  // Notes that the slot's own picture is shown, without view or magnification.
  void EndView();
  void ShowNothing(const char* reason);
  // Reads the shown picture again, after a dialog that reads others into the store.
  void ReadShown();
  bool KeepView();
  Mark SlotPixel(Mark shown) const;
  // Scrolls a pixel of the slot's picture into the middle; the marker, if any, goes with it.
  void ShowInMiddle(Mark slotPixel);

  ImageList* Combo1;
  PictureArea* area_;
  ReadOnlyBox* txbWidth;
  ReadOnlyBox* txbHeight;
  ReadOnlyBox* txbXPos;
  ReadOnlyBox* txbYPos;
  ReadOnlyBox* txbLum;
  QLabel* lblStatus;
  PixelMarking* marking_;

  float Magnification = 1.0f;
  int shownMagMode_ = 0;  // by which the magnified picture was made
  bool ViewChanged = false;
  int slotWidth_ = 0;  // of the slot's own picture
  int slotHeight_ = 0;
  QString hint_;    // what the status line says while no pixel is pointed at,
  QString marked_;  // and while one is marked
};

}  // namespace corvane
