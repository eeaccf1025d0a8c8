#pragma once

#include <QWidget>
#include <span>

#include "widgets/PictureBox.h"

namespace corvane {

// The scaling map `picStretch`: new gray levels (upwards) over old ones, with the labels around it.
class LevelMap : public QWidget {
 public:
  explicit LevelMap(QWidget* parent = nullptr);

  // Replaces the drawing. `meaning` is what a screen reader says of it.
  void Show(std::span<const Stroke> strokes, const QString& meaning);
  // Shows the map on which every level stays what it is.
  void ShowIdentity();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void LayOut();

  PictureBox* picStretch;
};

}  // namespace corvane
