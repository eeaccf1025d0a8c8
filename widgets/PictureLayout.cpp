#include "widgets/PictureLayout.h"

#include <QGridLayout>
#include <QStatusBar>

namespace corvane {
namespace {

constexpr int kStatusMargin = 7;  // the text stands under the picture's edge

}  // namespace

void LayOutAroundPicture(QMainWindow& window, QWidget* list, PictureArea* picture, QLayout* side,
                         QLabel* status) {
  auto* center = new QWidget;
  auto* grid = new QGridLayout(center);
  list->setFixedWidth(PictureArea::kWidth);
  grid->addWidget(list, 0, 0, Qt::AlignLeft);
  grid->addWidget(picture, 1, 0);
  grid->addLayout(side, 1, 1);
  grid->setColumnStretch(0, 1);
  grid->setRowStretch(1, 1);
  window.setCentralWidget(center);
  window.statusBar()->addWidget(status, 1);
  status->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);  // a long text widens no window
  window.statusBar()->setContentsMargins(kStatusMargin, 0, kStatusMargin, 0);
}

}  // namespace corvane
