#pragma once

#include <QBoxLayout>
#include <QPushButton>
#include <filesystem>
#include <initializer_list>
#include <span>

#include "analysis/HistogramPanel.h"
#include "base/display_bitmap.h"
#include "base/pixel_buffer.h"
#include "core/save_image.h"
#include "widgets/BarProgress.h"
#include "widgets/Thumbnail.h"
#include "widgets/ToolWindow.h"

namespace corvane {

// The texts in which the tools differ.
struct PreviewTexts {
  const char* name;
  const char* title;  // the name of the image follows
  const char* apply;
  const char* redoTip;
  const char* save;
  bool countsPadding = true;  // the histogram of the result counts the padding of its rows too
};

// A tool that changes the levels of the current image: preview, histogram, Apply, Undo, Redo, Save and the
// way to the other windows. The slot's display bitmap is the unchanged picture, "temp.bmp" the changed one;
// DisplayBits and the size fields describe the one that is shown.
class PreviewWindow : public ToolWindow {
  Q_OBJECT

 public:
  void Open() override;

 protected:
  enum class State {
    Missing,    // the picture cannot be read: the window can only be left
    Unchanged,  // as opened or saved
    Undone,     // the same, and Redo can show the result again
    Running,    // Apply, until the operation returns: only Apply itself is disabled
    Changed,    // the result is shown
  };

  PreviewWindow(const PreviewTexts& texts, ModCV& store, Platform& platform, Desk& windows);

  // For the constructor of a tool: its Options menu, of windows and dialogs only, and its toolbar.
  void AddMenus(std::span<const MenuItem> optionsMenu, std::span<const ToolKey> toolbar);
  // The tool's controls stand under the histogram, `side` under the preview.
  void LayOut(QWidget* controls, QWidget* side, std::initializer_list<QWidget*> tabOrder);
  // The bar of a tool whose runs take long: they show their progress there and can be cancelled.
  void ShowRunsOn(BarProgress* bar) { bar_ = bar; }

  void mnuFileSel_Click(int index);
  void Leave(Window next) override;

  virtual void Apply();
  virtual void Undo();
  void Redo();
  void SaveAs();

  // The tool's operation on levels: reads `source`, writes every byte of `result`. False once `progress` has
  // said that the user cancelled. May throw std::bad_alloc.
  virtual bool RunPreview(ConstGrayView source, GrayView result, Progress& progress) = 0;
  // The same operation on ImageData, which has the range 0..32767; it cannot be cancelled.
  virtual void RunOnData(Progress&) {}
  // Writes the changed picture as FITS, at 16 bits by RunOnData; false with everything as before.
  virtual bool SaveChanged(const ImageSave& save);
  // The controls as they are when the window opens.
  virtual void ResetControls() = 0;
  // The preview shows this file from now on.
  virtual void PreviewShown(const std::filesystem::path&) {}
  // What the tool draws over the graph of the unchanged picture.
  virtual void MarkGraph() {}
  // The tool's own controls: the user can set them while the unchanged picture is shown.
  virtual void EnableControls(bool enabled) = 0;
  void CancelRun() override;
  void OnUnload() override;

  // The user has changed what Apply would do, so the result is that of other settings.
  void DisableRedo();

  HistogramPanel* Panel() const { return panel_; }

 private:
  enum class Outcome { Done, Cancelled, Failed };

  QBoxLayout* Buttons();
  // The one place that enables and disables.
  void Enter(State state);
  void ShowTitle();
  std::filesystem::path SlotFile() const { return cv.SlotBitmap(cv.CurrentSlot); }
  std::filesystem::path ResultFile() const;
  void ReadSlot();
  bool LoadUnchanged();
  void CountUnchanged();
  void GraphUnchanged();
  Outcome MakeResult();
  bool ReadSource();
  bool Calculate(ConstGrayView source, GrayView result);
  bool TakeResult(GrayView result);
  void ShowResult();
  bool ShowPreview(const std::filesystem::path& picture);
  Progress& RunProgress();
  void ShowSaved(bool wasChanged);

  State state_ = State::Missing;
  HistogramPanel* panel_;
  Thumbnail* Image1;
  QPushButton* cmdApply;
  QPushButton* cmdCancel;
  QPushButton* cmdRedo;
  QPushButton* cmdSave;
  BarProgress* bar_ = nullptr;
  NoProgress noBar_;
  QString title_;
  bool countsPadding_;
  HistogramPanel::GraphState unchangedGraph_;
  HistogramPanel::GraphState changedGraph_;
  ByteBuffer result_;  // what a run writes; kept, so that its memory is got once
};

}  // namespace corvane
