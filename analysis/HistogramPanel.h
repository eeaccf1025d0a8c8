#pragma once

#include <QWidget>
#include <filesystem>

#include "analysis/histogram.h"
#include "core/modcv.h"
#include "widgets/PictureBox.h"

namespace corvane {

// The histogram graph `picHist` with the labels beside and under it and, for the tool windows, the gray bar
// `picCBar` below. The graph shown is either drawn from LumHist or the kept picture of an earlier one.
class HistogramPanel : public QWidget {
 public:
  enum class Form { GraphOnly, WithGrayBar };

  // A graph that was shown, for showing it again.
  struct GraphState {
    LevelHistogram counts{};
    int decades = 2;
    int barScale = 80;
  };

  explicit HistogramPanel(Form form, QWidget* parent = nullptr);

  // The texts under the graph's ends; GrayLevelAxis() until set.
  void SetLevelAxis(const LevelAxis& axis);

  // Removes picture, drawing and clip markers, then draws bars, grid and labels for LumHist. Writes
  // LumHistLog and HistDecades.
  void DrawHistogram(ModCV& cv);
  GraphState State() const { return state_; }
  // Saves the graph as a bitmap file in AppDir and goes on showing it as the picture's background, so that
  // clearing the drawing leaves it. Where the file cannot be written it is kept in memory.
  void Keep(const ModCV& cv, const char* file);
  // Shows a kept graph with its labels again, without clip markers. Where its file is lost it is drawn anew
  // from the state.
  void Restore(ModCV& cv, const char* file, const GraphState& state);

  // Red markers at both levels in the gray bar alone, or in graph and bar; earlier ones are removed.
  void MarkBar(int lowLevel, int highLevel);
  void MarkClips(int lowLevel, int highLevel);
  void ClearMarks();
  // There are markers in the graph, too.
  bool IsMarked() const { return isMarked_; }

  PictureBox* Graph() const { return picHist; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  static constexpr int kGraphWidth = 258;   // units -1..256
  static constexpr int kGraphHeight = 163;  // units -1..161

  void LayOut();
  void Graphscales(QPainter& painter) const;
  void TakeState(ModCV& cv, const GraphState& state);
  GraphFrame Frame() const;
  void Describe();

  PictureBox* picHist;
  PictureBox* picCBar;
  bool hasBar_;
  bool isMarked_ = false;
  LevelAxis axis_ = GrayLevelAxis();
  GraphState state_;
};

}  // namespace corvane
