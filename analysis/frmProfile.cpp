#include "analysis/frmProfile.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPaintEvent>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include "analysis/profile.h"
#include "base/numeric.h"
#include "platform/QtText.h"
#include "widgets/PaintLabels.h"
#include "widgets/controls.h"

namespace corvane {
namespace {

// The graph is 200 x 257 units, one to the pixel, inside a line of one pixel.
constexpr int kWidth = 202;
constexpr int kHeight = 259;
constexpr int kLeftRoom = 48;  // for the labels of the value axis
constexpr Color kFrameColor{160, 160, 160};
constexpr Stroke kFrame[] = {{-1, -2, 200, -2, kFrameColor},
                             {-1, 256, 200, 256, kFrameColor},
                             {-1, -2, -1, 256, kFrameColor},
                             {200, -2, 200, 256, kFrameColor}};

PictureBox* NewGraph(const char* name, const char* spokenName) {
  auto* graph = Named(new PictureBox, name, spokenName);
  graph->setFixedSize(kWidth, kHeight);
  graph->SetCoordinates(-1, 201, -2, 257);
  graph->SetBackground(Qt::white);
  // It paints its whole area, so drawing on it does not repaint the window behind.
  graph->setAttribute(Qt::WA_OpaquePaintEvent);
  return graph;
}

GraphFrame InnerFrame(const QWidget& window, const PictureBox& graph) {
  const QPoint corner = graph.mapTo(&window, QPoint(1, 1));
  return {corner.x(), corner.y(), kWidth - 2, kHeight - 2, TextScale(window)};
}

}  // namespace

frmProfile::frmProfile(ModCV& store, Platform&)
    : cv(store), picXP(NewGraph("picXP", "X profile")), picYP(NewGraph("picYP", "Y profile")) {
  setObjectName("frmProfile");
  setWindowTitle("XY Profile");
  picXP->setAccessibleDescription(ToQt(DescribeRowProfile(cv)));
  picYP->setAccessibleDescription(ToQt(DescribeColumnProfile(cv)));

  auto* cmdGrid = Named(new QPushButton("&Show Grid"), "cmdGrid", "Show grid");
  auto* cmdRefresh = Named(new QPushButton("&Remove Grid"), "cmdRefresh", "Remove grid");
  auto* cmdClose = Named(new QPushButton("&Close"), "cmdClose", "Close");
  cmdClose->setDefault(true);
  connect(cmdGrid, &QPushButton::clicked, this, &frmProfile::cmdGrid_Click);
  connect(cmdRefresh, &QPushButton::clicked, this, &frmProfile::cmdRefresh_Click);
  connect(cmdClose, &QPushButton::clicked, this, &QDialog::accept);

  auto* graphs = new QHBoxLayout;
  graphs->addWidget(GraphColumn(picXP, "X Profile", "Label1", "Left", "Right"));
  graphs->addSpacing(8);
  // The column runs downwards from right to left.
  graphs->addWidget(GraphColumn(picYP, "Y Profile", "Label2", "Down", ""));
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(cmdGrid);
  buttons->addWidget(cmdRefresh);
  buttons->addStretch();
  buttons->addWidget(cmdClose);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(graphs);
  layout->addLayout(buttons);
  layout->setSizeConstraint(QLayout::SetFixedSize);
  cmdClose->setFocus();
  cmdRefresh_Click();
}

QWidget* frmProfile::GraphColumn(PictureBox* graph, const char* title, const char* titleName,
                                 const char* left, const char* right) {
  auto* group = new QWidget;
  auto* column = new QVBoxLayout(group);
  const float scale = TextScale(*this);
  column->setContentsMargins(qRound(kLeftRoom * scale), 0, qRound(12 * scale), 0);
  column->setSpacing(3);
  column->addWidget(Named(PlainLabel(title), titleName), 0, Qt::AlignHCenter);
  column->addWidget(graph);
  column->addSpacing(fontMetrics().height());  // the numbers of the position axis
  auto* ends = new QHBoxLayout;
  ends->addWidget(PlainLabel(left));
  ends->addStretch();
  ends->addWidget(PlainLabel("Pixel Position"));
  ends->addStretch();
  ends->addWidget(PlainLabel(right));
  column->addLayout(ends);
  return group;
}

void frmProfile::cmdRefresh_Click() {
  picXP->Clear();
  picYP->Clear();
  picXP->Draw(RowProfileGraph(cv.XProfile, RoundEven(cv.MarkX)));
  picYP->Draw(ColumnProfileGraph(cv.YProfile, cv.Height() - 1 - RoundEven(cv.MarkY)));
  DrawFrames();
  gridShown_ = false;
}

void frmProfile::cmdGrid_Click() {
  if (gridShown_) return;
  picXP->Draw(ProfileGrid());
  picYP->Draw(ProfileGrid());
  DrawFrames();
  gridShown_ = true;
}

void frmProfile::DrawFrames() {
  picXP->Draw(kFrame);
  picYP->Draw(kFrame);
}

void frmProfile::paintEvent(QPaintEvent* event) {
  QDialog::paintEvent(event);
  QPainter painter(this);
  ProfileScale(painter);
  const auto place = [this](const PictureBox* graph) {
    return QRect(graph->mapTo(this, QPoint(0, 0)), graph->size());
  };
  if (event->rect().contains(place(picXP)) && event->rect().contains(place(picYP))) cmdGrid_Click();
}

void frmProfile::ProfileScale(QPainter& painter) const {
  PaintLabels(*this, painter, RowProfileLabels(InnerFrame(*this, *picXP)));
  PaintLabels(*this, painter, ColumnProfileLabels(InnerFrame(*this, *picYP)));
}

}  // namespace corvane
