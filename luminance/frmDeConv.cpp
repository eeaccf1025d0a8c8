#include "luminance/frmDeConv.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <new>

#include "base/text.h"
#include "core/accepted.h"
#include "widgets/UpDown.h"
#include "widgets/controls.h"

namespace corvane {
namespace {

constexpr float kLeastRadius = 0.5f;
constexpr float kMostRadius = 20.0f;
constexpr int kStepsPerPixel = 10;

QString RadiusText(float radius) { return QString::fromStdString(ShortestDecimal(radius)); }

}  // namespace

frmDeConv::frmDeConv(ModCV& store, Platform& platform)
    : cv(store),
      os(platform),
      txbRad(Named(new QLineEdit, "txbRad", "Radius of the point spread in pixels, 0.5 to 20")),
      radiusRow_(RadiusRow()),
      Option1(Named(new QRadioButton("Standard"), "Option1", "Standard: for bright detail")),
      Option2(Named(new QRadioButton("Deep-Sky"), "Option2", "Deep-Sky: for faint stars")),
      modeFrame_(ModeFrame()),
      panel_(new IterationPanel({"Iteration Progress", "Iteration Number", "RMS Error"}, 2)),
      Frame1(ProgressFrame()),
      cmdApply(Named(new QPushButton("&Apply"), "cmdApply", "Apply")),
      cmdCancel(Named(new QPushButton("&Cancel"), "cmdCancel", "Cancel")) {
  setObjectName("frmDeConv");
  setWindowTitle("Deconvolution");
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(radiusRow_);
  layout->addWidget(modeFrame_);
  layout->addWidget(Buttons());
  layout->addWidget(Frame1);  // the window grows by it, and Cancel keeps its place
  layout->setSizeConstraint(QLayout::SetFixedSize);
  Enter(State::Idle);
}

QWidget* frmDeConv::RadiusRow() {
  txbRad->setText(RadiusText(cv.DeconvRadius));
  txbRad->setMaximumWidth(txbRad->fontMetrics().averageCharWidth() * 12);
  auto* UpDown1 = Named(new UpDown(txbRad, static_cast<int>(kLeastRadius * kStepsPerPixel),
                                   static_cast<int>(kMostRadius * kStepsPerPixel), kStepsPerPixel),
                        "UpDown1", "Change the radius by a tenth of a pixel");
  auto* label = Named(PlainLabel("Radius (HWHM) of PSF In Pixels"), "Label1");
  label->setBuddy(txbRad);
  auto* bar = new QWidget;
  auto* row = new QHBoxLayout(bar);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(label);
  row->addStretch();
  auto* number = new QHBoxLayout;
  number->setSpacing(1);
  number->addWidget(txbRad);
  number->addWidget(UpDown1);
  row->addLayout(number);
  return bar;
}

QWidget* frmDeConv::ModeFrame() {
  (cv.DeconvStandard ? Option1 : Option2)->setChecked(true);
  connect(Option1, &QRadioButton::toggled, this, [this](bool standard) { cv.DeconvStandard = standard; });
  auto* frame = Named(new QGroupBox("Restoration"), "Frame2", "Restoration");
  auto* row = new QHBoxLayout(frame);
  row->addWidget(Option1);
  row->addWidget(Option2);
  row->addStretch();
  return frame;
}

QWidget* frmDeConv::ProgressFrame() {
  auto* frame = Named(new QGroupBox("Progress"), "Frame1", "Progress");
  auto* column = new QVBoxLayout(frame);
  column->addWidget(panel_);
  return frame;
}

QWidget* frmDeConv::Buttons() {
  cmdApply->setDefault(true);
  cmdCancel->setAutoDefault(false);  // Return held down at Apply must not reach it
  connect(cmdApply, &QPushButton::clicked, this, &frmDeConv::cmdApply_Click);
  connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  auto* bar = new QWidget;
  auto* row = new QHBoxLayout(bar);
  row->setContentsMargins(0, 6, 0, 0);
  row->addStretch();
  row->addWidget(cmdApply);
  row->addWidget(cmdCancel);
  return bar;
}

void frmDeConv::Enter(State state) {
  state_ = state;
  const bool running = state == State::Running;
  for (QWidget* input : {radiusRow_, modeFrame_, static_cast<QWidget*>(cmdApply)})
    input->setEnabled(state == State::Idle);
  Frame1->setVisible(running);
  if (running) {
    panel_->Clear();
    cmdCancel->setFocus();
    setCursor(Qt::BusyCursor);  // arrow and hourglass: Cancel can be pressed
  } else {
    unsetCursor();
    txbRad->setFocus();
    txbRad->selectAll();
  }
}

void frmDeConv::cmdApply_Click() {
  if (!TakeRadius()) return;
  Enter(State::Running);
  bool restored = false;
  try {
    const Restoration mode = cv.DeconvStandard ? Restoration::Standard : Restoration::DeepSky;
    restored = DeconvolveDisplay(cv.Display(), cv.DeconvRadius, mode, *this);
  } catch (const std::bad_alloc&) {
    Enter(State::Idle);  // the message is no place for the cursor of a run
    Refuse(os, NotEnoughMemory());
  }
  Enter(restored ? State::Finished : State::Idle);
  done(restored ? Accepted : Rejected);
}

bool frmDeConv::TakeRadius() {
  const auto typed = ParseNumber(txbRad->text().toStdString());
  if (!typed) {
    os.Message("Non-Numeric Input!", "INPUT ERROR");
    txbRad->setFocus();
    txbRad->selectAll();
    return false;
  }
  // No float is as large as the largest number that can be typed.
  const auto radius = static_cast<float>(std::min(std::abs(*typed), 1e30));
  if (radius < kLeastRadius) return RefuseRadius(kLeastRadius, "The minimum radius is 0.5 pixel."), false;
  if (radius > kMostRadius) return RefuseRadius(kMostRadius, "The maximum radius is 20 pixels."), false;
  cv.DeconvRadius = radius;
  txbRad->setText(RadiusText(radius));
  return true;
}

void frmDeConv::RefuseRadius(float limit, const char* message) {
  os.Message(message, "RADIUS ERROR");
  cv.DeconvRadius = limit;
  txbRad->setText(RadiusText(limit));
  txbRad->setFocus();
  txbRad->selectAll();
}

bool frmDeConv::Row(int done, int total) {
  panel_->ShowRow(done, total);
  os.Yield();
  return !cv.DeconvCancelled;
}

bool frmDeConv::Iteration(int iteration, float relativeError) {
  panel_->ShowIteration(iteration, relativeError);
  os.Yield();
  return !cv.DeconvCancelled;
}

void frmDeConv::done(int result) {
  if (state_ != State::Finished) cv.DeconvCancelled = true;
  if (state_ != State::Running) QDialog::done(result);
}

}  // namespace corvane
