#include "app/frmPref.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <algorithm>

#include "base/numeric.h"
#include "base/text.h"
#include "core/startup.h"
#include "widgets/SelectingBox.h"
#include "widgets/UpDown.h"
#include "widgets/controls.h"

namespace corvane {
namespace {

constexpr int kFewestCycles = 1;
constexpr int kMostCycles = 128;

struct PaletteOption {
  const char* name;
  const char* text;
  const char* description;
};
constexpr PaletteOption kPaletteOptions[] = {
    {"Option1", "Blue-Turq.", "Pseudo-color from blue to turquoise"},
    {"Option2", "Red-Yellow", "Pseudo-color from red to yellow"},
    {"Option3", "Blue-Red", "Pseudo-color from blue to red"},
};

QRadioButton* Choice(const char* name, const char* text, const char* description, bool chosen) {
  auto* option = Named(new QRadioButton(QLatin1String(text)), name, QLatin1String(description));
  option->setChecked(chosen);
  return option;
}

// A frame of options, one below the other.
template <class... Options>
QGroupBox* Frame(const char* name, const char* title, Options*... options) {
  auto* frame = Named(new QGroupBox(QLatin1String(title)), name, QLatin1String(title));
  auto* column = new QVBoxLayout(frame);
  (column->addWidget(options), ...);
  column->addStretch();
  return frame;
}

}  // namespace

frmPref::frmPref(ModCV& store, Platform& platform) : cv(store), os(platform), palette_(store.PColorSetting) {
  setObjectName("frmPref");
  setWindowTitle("Preferences");
  auto* grid = new QGridLayout;
  grid->addWidget(MagnificationFrame(), 0, 0);
  grid->addWidget(RasterFrame(), 0, 1);
  grid->addWidget(FileTypeFrame(), 1, 0);
  grid->addWidget(PaletteFrame(), 1, 1);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(grid);
  layout->addWidget(Buttons());
  layout->setSizeConstraint(QLayout::SetFixedSize);
  Text1->setFocus();
}

QWidget* frmPref::MagnificationFrame() {
  optRep = Choice("optRep", "Replicate Pixels", "Magnify by replicating pixels", cv.MagMode == 0);
  optInterp = Choice("optInterp", "Interpolate Pixels", "Magnify by interpolating pixels", cv.MagMode != 0);
  return Frame("Frame1", "Magnification", optRep, optInterp);
}

QWidget* frmPref::RasterFrame() {
  Text1 = Named(new SelectingBox, "Text1", "Raster cycles, 1 to 128");
  Text1->setText(QString::number(cv.RasterCycles));
  Text1->setMaximumWidth(Text1->fontMetrics().averageCharWidth() * 10);
  auto* UpDown1 = Named(new UpDown(Text1, kFewestCycles, kMostCycles), "UpDown1", "Change the raster cycles");
  auto* label = Named(new QLabel("Raster Cycles"), "Label2");
  label->setBuddy(Text1);
  auto* frame = Named(new QGroupBox("Luminance Raster"), "Frame2", "Luminance raster");
  auto* row = new QHBoxLayout;
  row->addWidget(label);
  row->addStretch();
  auto* number = new QHBoxLayout;
  number->setSpacing(1);
  number->addWidget(Text1);
  number->addWidget(UpDown1);
  row->addLayout(number);
  auto* column = new QVBoxLayout(frame);
  column->addLayout(row);
  column->addStretch();
  return frame;
}

QWidget* frmPref::FileTypeFrame() {
  optBMP = Choice("optBMP", "BMP", "Bitmap is the default file type", cv.FileTypeSetting == 1);
  optFTS = Choice("optFTS", "FITS", "FITS is the default file type", cv.FileTypeSetting != 1);
  return Frame("Frame3", "Default File Type", optBMP, optFTS);
}

QWidget* frmPref::PaletteFrame() {
  QRadioButton* options[3];
  for (int i = 0; i < 3; ++i) {
    const PaletteOption& row = kPaletteOptions[i];
    options[i] = Choice(row.name, row.text, row.description, palette_ == i);
    connect(options[i], &QRadioButton::clicked, this, [this, i] { palette_ = i; });
  }
  return Frame("Frame4", "Pseudo-Color", options[0], options[1], options[2]);
}

QWidget* frmPref::Buttons() {
  auto* cmdApply = Named(new QPushButton("&Apply This Session"), "cmdApply", "Apply for this session");
  auto* cmdSave = Named(new QPushButton("&Save Settings"), "cmdSave", "Apply and save the settings");
  auto* cmdCancel = Named(new QPushButton("&Cancel"), "cmdCancel", "Cancel");
  cmdApply->setDefault(true);
  connect(cmdApply, &QPushButton::clicked, this, &frmPref::cmdApply_Click);
  connect(cmdSave, &QPushButton::clicked, this, &frmPref::cmdSave_Click);
  connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  auto* bar = new QWidget;
  auto* row = new QHBoxLayout(bar);
  row->setContentsMargins(0, 6, 0, 0);
  row->addStretch();
  row->addWidget(cmdApply);
  row->addWidget(cmdSave);
  row->addWidget(cmdCancel);
  return bar;
}

void frmPref::cmdApply_Click() {
  if (Apply()) accept();
}

void frmPref::cmdSave_Click() {
  if (Apply() && SavePreferences(cv, os)) accept();
}

bool frmPref::Apply() {
  const auto cycles = ParseNumber(Text1->text().toStdString());
  if (!cycles) {
    os.Message("Non-Numeric Input", "INPUT ERROR");
    Text1->setFocus();
    return false;
  }
  const double taken = std::clamp<double>(*cycles, kFewestCycles, kMostCycles);
  if (taken != *cycles) {
    Text1->setText(QString::number(taken));
    Text1->setFocus();
    Text1->selectAll();
    return false;
  }
  cv.RasterCycles = RoundEven(taken);
  cv.MagMode = optInterp->isChecked() ? 1 : 0;
  cv.FileTypeSetting = optFTS->isChecked() ? 2 : 1;
  cv.PColorSetting = palette_;
  return true;
}

}  // namespace corvane
