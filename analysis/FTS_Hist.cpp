#include "analysis/FTS_Hist.h"

#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>
#include <new>

#include "core/accepted.h"
#include "platform/QtText.h"
#include "platform/busy.h"
#include "widgets/PaintLabels.h"
#include "widgets/controls.h"

namespace corvane {
namespace {

constexpr int kWordLeft = 3;
constexpr int kWordTop = 27;
constexpr int kLetterStep = 20;
constexpr int kWordWidth = 18;

}  // namespace

FTS_Hist::FTS_Hist(ModCV& store, Platform& platform)
    : panel_(new HistogramPanel(HistogramPanel::Form::GraphOnly)) {
  setObjectName("FTS_Hist");
  setWindowTitle("Histogram");
  auto* Label1 = Named(PlainLabel("LUMINANCE"), "Label1");
  Label1->setAlignment(Qt::AlignHCenter);
  auto* cmdClose = Named(new QPushButton("&Close"), "cmdClose", "Close");
  cmdClose->setDefault(true);
  connect(cmdClose, &QPushButton::clicked, this, &QDialog::accept);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(kWordWidth, 4, 8, 8);
  layout->addWidget(panel_);
  // Centered under the graph, not under the panel, which is wider by the labels of its count axis.
  const int graphCenter = panel_->Graph()->geometry().center().x();
  Label1->setFixedWidth(2 * graphCenter);
  layout->addWidget(Label1, 0, Qt::AlignLeft);
  layout->addWidget(cmdClose, 0, Qt::AlignRight);
  layout->setSizeConstraint(QLayout::SetFixedSize);

  const Busy busy(platform);
  try {
    CountCurrentImage(store);
  } catch (const std::bad_alloc&) {
    Refuse(platform, NotEnoughMemory());
  }
  const std::string caption = HistogramCaption(store.BytesPerPixel);
  if (!caption.empty()) setWindowTitle(ToQt(caption));
  panel_->SetLevelAxis(DataLevelAxis(store.BytesPerPixel, store.ImageMin, store.ImageMax));
  panel_->DrawHistogram(store);
}

void FTS_Hist::paintEvent(QPaintEvent* event) {
  QDialog::paintEvent(event);
  QPainter painter(this);
  PaintLabels(*this, painter, VerticalWord("PIXELS", kWordLeft, kWordTop, kLetterStep));
}

}  // namespace corvane
