#pragma once

#include <QBoxLayout>
#include <QPushButton>
#include <filesystem>
#include <functional>
#include <initializer_list>
#include <span>

#include "analysis/HistogramPanel.h"
#include "core/display_bitmap.h"
#include "core/pixel_buffer.h"
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
    Changed,    // the result is shown
  };

  PreviewWindow(const PreviewTexts& texts, ModCV& store, Platform& platform, Desk& windows);

  // For the constructor of a tool. The first two rows of every Options menu are ours.
  void AddMenus(std::span<const MenuItem> optionsMenu, Handler optionsHandler,
                std::span<const ToolKey> toolbar);
  // The tool's controls stand under the histogram, `side` under the preview.
  void LayOut(QWidget* controls, QWidget* side, std::initializer_list<QWidget*> tabOrder);

  void mnuFileSel_Click(int index);
  void mnuOptSel_Click(int index);
  void HandOver(Window next);

  virtual void Apply();
  virtual void Undo();
  void Redo();
  void SaveAs();

  // The tool's operation on levels: reads `source`, writes every byte of `result`. False ends Apply with
  // nothing changed.
  virtual bool RunPreview(ConstGrayView source, GrayView result) = 0;
  // Writes the changed picture as FITS; false with everything as before.
  virtual bool SaveChanged(const std::filesystem::path& path) = 0;
  // The controls as they are when the window opens.
  virtual void ResetControls() = 0;
  // What the tool draws over the graph of the unchanged picture.
  virtual void MarkGraph() {}
  // The one place that enables and disables; a tool adds its own controls.
  virtual void Enter(State state);
  void OnUnload() override;

  // Writes the slot's picture as FITS, at 16 bits after `operation` on ImageData.
  bool SaveSlot(const std::filesystem::path& path, const std::function<void()>& operation);
  // The user has changed what Apply would do, so the result is that of other settings.
  void DisableRedo();
  bool IsMissing() const { return state_ == State::Missing; }

  HistogramPanel* Panel() const { return panel_; }

 private:
  QBoxLayout* Buttons();
  void ShowTitle();
  std::filesystem::path SlotFile() const { return cv.SlotBitmap(cv.CurrentSlot); }
  std::filesystem::path ResultFile() const;
  void ReadSlot();
  bool LoadUnchanged();
  void CountUnchanged();
  bool MakeResult();
  void ShowSaved(bool wasChanged);

  State state_ = State::Missing;
  HistogramPanel* panel_;
  Thumbnail* Image1;
  QPushButton* cmdApply;
  QPushButton* cmdCancel;
  QPushButton* cmdRedo;
  QPushButton* cmdSave;
  QString title_;
  HistogramPanel::GraphState unchangedGraph_;
  HistogramPanel::GraphState changedGraph_;
  ByteBuffer result_;  // what a run writes; kept, so that its memory is got once
};

}  // namespace corvane
