#pragma once

#include <QButtonGroup>
#include <QLabel>
#include <QPushButton>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "base/display_bitmap.h"
#include "core/save_image.h"
#include "widgets/ImageList.h"
#include "widgets/MultiplierBox.h"
#include "widgets/NameLabel.h"
#include "widgets/Thumbnail.h"
#include "widgets/ToolWindow.h"

namespace corvane {

// Combines two images of one size, each with its multiplier, by one of six methods. The result waits as
// "temp.bmp" until it is saved, which makes it a new image, or undone; meanwhile the window is locked.
class frmCombine : public ToolWindow {
  Q_OBJECT

 public:
  frmCombine(ModCV& store, Platform& platform, Desk& windows);

  void Open() override;

  // Loads the pictures that the lists choose. False, after a message or the question that leads to the
  // aligner, unless they are of one size.
  bool Compatibility(DisplayBitmap& first, DisplayBitmap& second);
  // Closes the current image, the one chosen last.
  void ImageCloser();
  // Closes the next input of the saved result, that of the higher slot first, and shows nothing. False after
  // a message.
  bool ImageCloserStackMode();
  // The combination at full precision, 0..32767. Throws std::bad_alloc.
  FloatImage SixteenBitSave() const;

 protected:
  void ShowModal(Dialog dialog) override;
  bool MayExit() override;
  void OnUnload() override;

 private:
  enum Mode { kStacker, kPreserve };

  struct InputNames {
    const char *title, *list, *thumbnail, *label, *box, *arrows, *multiplier;
  };
  // What belongs to one of the two images.
  struct Input {
    explicit Input(const InputNames& names);
    int Slot() const { return list->currentIndex(); }

    QString title;  // "Image #1"
    ImageList* list;
    Thumbnail* thumbnail;
    NameLabel* label;
    MultiplierBox* multiplier;
  };
  // A result that is neither saved nor undone, and what it was made of: an input may be closed before the
  // save. The data share the memory of their slots.
  struct Result {
    int method = 0;  // its row in the table of methods
    float m1 = 1;
    float m2 = 1;
    int precision = 1;  // of the inputs where both have the same
    FloatImage data1, data2;
    std::string originalFiles;
    std::vector<int> inputs;  // slots that Stacker mode closes after the save, the highest first
  };

  // frmCombine.cpp
  QWidget* Column(const Input& input, QWidget* multiplierLabel);
  QWidget* ResultColumn();
  QWidget* Methods();
  QWidget* Buttons();
  void LayOut();
  void mnuFileSel_Click(int index);
  void SelectMode(Mode mode);
  // The one place that enables and disables.
  void Enter();
  // Shows the image of a slot, which becomes the current one, as an input.
  void Show(Input& input, int slot);
  // Fills the lists; both inputs show the current image then.
  void ListImages();
  void OpenFile();
  // False, after the message that frees Close File, with ten images open.
  bool RoomForResult();

  // frmCombine_result.cpp
  void cmdCombine_Click();
  void cmdUndo_Click();
  void cmdSave_Click();
  std::filesystem::path ResultFile() const;
  bool LoadPicture(int slot, DisplayBitmap& picture);
  // Checks both multipliers and shows them without sign. False after a message.
  bool TakeMultipliers(Result& result);
  void TakeInputs(Result& result) const;
  bool WriteResult(const ImageSave& save, ImageKind kind);
  // Makes the written result an image, and in Stacker mode closes its inputs. False after a message.
  bool TakeResult(const ImageSave& save);

  Input first_;
  Input second_;
  Thumbnail* Image3;
  QLabel* lblHint;
  QButtonGroup* methods_;
  QPushButton* cmdCombine;
  QPushButton* cmdUndo;
  QPushButton* cmdSave;

  Mode ComboMode = kStacker;
  std::optional<Result> result_;
};

}  // namespace corvane
