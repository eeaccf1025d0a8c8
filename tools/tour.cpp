// Drives the real windows over the sample pictures: tour [--dark] SAMPLES OUTPUT. Writes a picture of every
// window and the files that the program saves. QT_SCALE_FACTOR enlarges everything.

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPalette>
#include <QRadioButton>
#include <QSlider>
#include <QStyleFactory>
#include <QTemporaryDir>
#include <QTimer>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <iostream>

#include "core/working_files.h"
#include "tools/TourGuide.h"

namespace {

using corvane::TourGuide;

// The offscreen platform warns at every window of what it cannot do.
void PassOnMessage(QtMsgType, const QMessageLogContext&, const QString& text) {
  if (!text.startsWith("This plugin does not support")) std::cerr << text.toStdString() << '\n';
}

void UseDarkColors() {
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  QPalette palette(QColor(53, 53, 53));
  palette.setColor(QPalette::Base, QColor(35, 35, 35));
  palette.setColor(QPalette::Highlight, QColor(42, 130, 218));
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, QColor(127, 127, 127));
  QApplication::setPalette(palette);
}

void OpenSamples(TourGuide& tour) {
  tour.Picture("viewer-without-an-image");
  tour.ExpectFile(tour.Sample("field_1.fit"), "open-file");
  tour.Choose("mnuFileSel_0");
  tour.Picture("viewer-16-bit-image");
  for (const char* name : {"bits_8.fit", "color_24.bmp", "float_32.fit"}) {
    tour.ExpectFile(tour.Sample(name));
    tour.Choose("mnuFileSel_0");
  }
  tour.Picture("viewer-float-image");
  if (auto* list = tour.Find<QComboBox>(tour.Shown(), "Combo1")) list->setCurrentIndex(1);
  if (auto* picture = tour.Find<QWidget>(tour.Shown(), "picMark")) tour.ClickAt(*picture, {165, 255});
  tour.Picture("viewer-marked-pixel");
}

void ShowViews(TourGuide& tour) {
  const std::pair<const char*, const char*> views[] = {{"mnuToolSel_4", "view-raster"},
                                                       {"mnuToolSel_5", "view-edges"},
                                                       {"mnuToolSel_6", "view-negative"},
                                                       {"mnuToolSel_7", "view-pseudo-color"},
                                                       {"mnuToolSel_13", "view-rotated-90"},
                                                       {"mnuToolSel_14", "view-rotated-180"},
                                                       {"mnuToolSel_15", "view-flipped-left-right"},
                                                       {"mnuToolSel_16", "view-flipped-top-bottom"}};
  for (const auto& [item, name] : views) {
    tour.Choose(item);
    tour.Picture(name);
  }
  tour.Choose("mnuToolSel_16");
  tour.Choose("mnuToolSel_10");
  tour.Picture("view-magnified");
  tour.Choose("mnuToolSel_11");
}

void ShowDialogs(TourGuide& tour) {
  tour.ExpectDialog("image-information", "cmdOK");
  tour.Choose("mnuToolSel_0");
  tour.ExpectDialog("histogram", "cmdClose");
  tour.Choose("mnuToolSel_1");
  if (auto* picture = tour.Find<QWidget>(tour.Shown(), "picMark")) tour.ClickAt(*picture, {165, 255});
  tour.Expect([&tour](QDialog& profile) {
    tour.Press(profile, "cmdGrid");
    tour.Picture("profile", profile);
    tour.Press(profile, "cmdClose");
  });
  tour.Choose("mnuToolSel_2");
  tour.ExpectDialog("preferences", "cmdCancel");
  tour.Choose("mnuToolSel_22");
  tour.ExpectDialog("about", "cmdOK");
  tour.Choose("mnuHelpSel_2");
  tour.Choose("mnuHelpSel_0");
  for (QWidget* window : QApplication::topLevelWidgets())
    if (window->objectName() == "HelpViewer" && window->isVisible()) {
      tour.Picture("help", *window);
      tour.os.OpenHelp(tour.cv.AppDir / corvane::kHelpFile, "median");
      tour.Picture("help-topic", *window);
      window->close();
    }
}

void Deconvolve(TourGuide& tour) {
  if (auto* list = tour.Find<QComboBox>(tour.Shown(), "Combo1")) list->setCurrentIndex(0);
  tour.Expect([&tour](QDialog& dialog) {
    auto* radius = tour.Find<QLineEdit>(dialog, "txbRad");
    auto* iteration = tour.Find<QLabel>(dialog, "lblIteration");
    if (!radius || !iteration) return dialog.reject();
    radius->setText("2");
    tour.Press(dialog, "Option2");
    tour.Picture("deconvolution", dialog);
    // In the middle of the run; one that is over sooner has no picture.
    auto* watch = new QTimer(&dialog);
    QObject::connect(watch, &QTimer::timeout, watch, [&tour, &dialog, iteration, watch] {
      if (iteration->text().isEmpty()) return;
      watch->stop();
      tour.Picture("deconvolution-running", dialog);
    });
    watch->start(0);
    tour.Press(dialog, "cmdApply");
  });
  tour.Choose("mnuToolSel_8");
  tour.Picture("view-deconvolved");
}

// What the user does in the dialogs of a save.
void ExpectFits(TourGuide& tour, const char* name, const char* bits, const QString& picture) {
  tour.ExpectFile(tour.Output(name));
  tour.Expect([&tour, bits, picture](QDialog& options) {
    if (auto* button = tour.Find<QRadioButton>(options, bits)) button->setChecked(true);
    if (auto* comment = tour.Find<QLineEdit>(options, "txbComment")) comment->setText("Saved by the tour");
    if (!picture.isEmpty()) tour.Picture(picture, options);
    tour.Press(options, "cmdClose");
  });
}

void SaveFits(TourGuide& tour, const char* item, const char* name, const char* bits, const QString& picture) {
  ExpectFits(tour, name, bits, picture);
  tour.Choose(item);
}

void SaveDeconvolved(TourGuide& tour) {
  // The window of the run on the data closes by itself; a run that is over sooner has no picture.
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, &watch, [&tour, &watch] {
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (window->objectName() != "frmSave16" || !window->isVisible()) continue;
      if (tour.Find<QLabel>(*window, "lblIteration")->text().isEmpty()) continue;
      watch.stop();
      return tour.Picture("deconvolution-saving", *window);
    }
  });
  watch.start(0);
  SaveFits(tour, "mnuFileSel_1", "deconvolved_16.fts", "Option2", "deconvolution-save-options");
}

void SaveAndClose(TourGuide& tour) {
  if (auto* list = tour.Find<QComboBox>(tour.Shown(), "Combo1")) list->setCurrentIndex(0);
  SaveFits(tour, "mnuFileSel_1", "saved_16.fts", "Option2", "save-options-16-bits");
  tour.Picture("viewer-after-the-save");
  SaveFits(tour, "mnuFileSel_1", "saved_8.fts", "Option1", "save-options-8-bits");
  tour.Choose("mnuToolSel_7");
  tour.ExpectFile(tour.Output("saved_color.bmp"), "save-file");
  tour.Choose("mnuFileSel_1");
  tour.Choose("mnuFileSel_2");
  tour.Picture("viewer-one-image-closed");
}

void SetSlider(TourGuide& tour, const char* name, int level) {
  if (auto* slider = tour.Find<QSlider>(tour.Shown(), name)) slider->setValue(level);
}

void ShowCurves(TourGuide& tour, QComboBox& curves) {
  for (int curve = 0; curve < curves.count(); ++curve) {
    if (curves.itemText(curve) == "Select Exponent...")
      tour.Expect([&tour](QDialog& exponent) {
        if (auto* box = tour.Find<QLineEdit>(exponent, "txbExp")) box->setText("1.5");
        tour.Picture("scaling-exponent", exponent);
        tour.Press(exponent, "cmdOK");
      });
    curves.setCurrentIndex(curve);
    tour.Picture(QString("scaling-curve-%1").arg(curve));
  }
}

void ScaleLevels(TourGuide& tour) {
  tour.ExpectFile(tour.Sample("field_1.fit"));
  tour.Choose("mnuFileSel_0");
  tour.Choose("mnuToolSel_18");
  tour.Picture("scaling-opened");
  auto* curves = tour.Find<QComboBox>(tour.Shown(), "Combo1");
  if (!curves) return;
  SetSlider(tour, "sldLow", 30);
  SetSlider(tour, "sldHigh", 200);
  ShowCurves(tour, *curves);
  SetSlider(tour, "sldLow", 0);
  curves->setCurrentIndex(1);
  tour.Press(tour.Shown(), "cmdApply");
  tour.Picture("scaling-applied");
  tour.Press(tour.Shown(), "cmdCancel");
  tour.Picture("scaling-undone");
  tour.Press(tour.Shown(), "cmdRedo");
  SaveFits(tour, "mnuFileSel_0", "scaled_16.fts", "Option2", "scaling-save-options");
  tour.Picture("scaling-saved");
}

void MaskLevels(TourGuide& tour) {
  tour.Choose("mnuOptSel_3");
  tour.Picture("mask-opened");
  SetSlider(tour, "sldLow", 60);
  SetSlider(tour, "sldHigh", 230);
  SetSlider(tour, "sldClr", 128);
  tour.Picture("mask-set");
  tour.Press(tour.Shown(), "cmdApply");
  tour.Picture("mask-applied");
  tour.ExpectFile(tour.Output("masked.bmp"));
  tour.Choose("mnuFileSel_0");
  tour.Choose("mnuFileSel_2");
  tour.Picture("viewer-masked-image");
}

void FilterImage(TourGuide& tour) {
  tour.ExpectFile(tour.Sample("field_1.fit"));
  tour.Choose("mnuFileSel_0");
  tour.Choose("mnuToolSel_19");
  tour.Picture("filter-opened");
  auto* filters = tour.Find<QComboBox>(tour.Shown(), "Combo1");
  if (!filters) return;
  for (int filter = 0; filter < filters->count(); ++filter) {
    filters->setCurrentIndex(filter);
    tour.Press(tour.Shown(), "Opt_1");
    tour.Press(tour.Shown(), "cmdApply");
    tour.Picture(QString("filter-applied-%1").arg(filter));
    if (filter + 1 < filters->count()) tour.Press(tour.Shown(), "cmdCancel");
  }
  SaveFits(tour, "mnuFileSel_0", "filtered_16.fts", "Option2", "filter-save-options");
  tour.Picture("filter-saved");
  tour.Choose("mnuFileSel_2");
}

void CloseEveryImage(TourGuide& tour) {
  for (int image = tour.cv.ImageCount; image > 0; --image) tour.Choose("mnuFileSel_2");
}

void MarkFrames(TourGuide& tour) {
  auto* frames = tour.Find<QComboBox>(tour.Shown(), "Combo1");
  auto* picture = tour.Find<QWidget>(tour.Shown(), "picMark");
  if (!frames || !picture) return;
  // Near one star, which the drift of the telescope has moved.
  const QPoint stars[] = {{210, 68}, {203, 70}, {213, 60}};
  for (int frame = 0; frame < frames->count(); ++frame) {
    frames->setCurrentIndex(frame);
    tour.ClickAt(*picture, stars[frame]);
  }
}

void AlignFrames(TourGuide& tour) {
  CloseEveryImage(tour);
  for (const char* name : {"field_1.fit", "field_2.fit", "field_3.fit"}) {
    tour.ExpectFile(tour.Sample(name));
    tour.Choose("mnuFileSel_0");
  }
  tour.Choose("mnuFileSel_4");
  tour.Picture("aligner-opened");
  tour.ExpectDialog("aligner-auto-adjust", "cmdApply");
  tour.Choose("mnuModeSel_3");
  MarkFrames(tour);
  tour.Picture("aligner-marked");
  tour.Choose("mnuModeSel_1");
  tour.Press(tour.Shown(), "cmdAlign");
  tour.Picture("aligner-mosaic");
  tour.Press(tour.Shown(), "cmdCancel");
  MarkFrames(tour);
  tour.Choose("mnuModeSel_0");
  tour.Press(tour.Shown(), "cmdAlign");
  tour.Picture("aligner-cropped");
  ExpectFits(tour, "aligned_1.fts", "Option2", "aligner-save-options");
  for (const char* name : {"aligned_2.fts", "aligned_3.fts"}) ExpectFits(tour, name, "Option2", {});
  tour.Press(tour.Shown(), "cmdSave");
  tour.Picture("aligner-saved");
  tour.Choose("mnuFileSel_3");
}

void Combine(TourGuide& tour, const char* first, const char* second, const char* method) {
  for (const auto& [list, name] : {std::pair("Combo1", first), std::pair("Combo2", second)})
    if (auto* images = tour.Find<QComboBox>(tour.Shown(), list)) images->setCurrentText(name);
  tour.Press(tour.Shown(), method);
  tour.Press(tour.Shown(), "cmdCombine");
}

void StackFrames(TourGuide& tour) {
  tour.Choose("mnuFileSel_5");
  tour.Picture("combiner-opened");
  Combine(tour, "aligned_1.fts", "aligned_2.fts", "Option3");
  tour.Picture("combiner-average");
  ExpectFits(tour, "stack_2.fts", "Option2", "combiner-save-options");
  tour.Press(tour.Shown(), "cmdSave");
  tour.Picture("combiner-stacked");
  if (auto* multiplier = tour.Find<QLineEdit>(tour.Shown(), "Text2")) multiplier->setText("0.5");
  Combine(tour, "stack_2.fts", "aligned_3.fts", "Option3");
  ExpectFits(tour, "stack_3.fts", "Option2", {});
  tour.Press(tour.Shown(), "cmdSave");
}

void DivideByFlat(TourGuide& tour) {
  for (const char* name : {"field_1.fit", "flat.fit"}) {
    tour.ExpectFile(tour.Sample(name));
    tour.Choose("mnuFileSel_0");
  }
  tour.ExpectQuestion("combiner-two-sizes", QMessageBox::No);
  Combine(tour, "stack_3.fts", "flat.fit", "Option6");
  if (auto* multiplier = tour.Find<QLineEdit>(tour.Shown(), "Text2")) multiplier->setText("1");
  tour.Choose("mnuConfSel_1");
  Combine(tour, "field_1.fit", "flat.fit", "Option6");
  tour.Picture("combiner-flat-field");
  ExpectFits(tour, "flat_fielded_16.fts", "Option2", {});
  tour.Press(tour.Shown(), "cmdSave");
  tour.Picture("combiner-preserved");
  tour.Choose("mnuFileSel_3");
}

void SetText(TourGuide& tour, const char* box, const char* text) {
  if (auto* line = tour.Find<QLineEdit>(tour.Shown(), box)) line->setText(text);
}

// Brings out the faint parts of a frame, as its display bitmap has them.
void ScaleFrame(TourGuide& tour, const char* name) {
  tour.ExpectFile(tour.Sample(name));
  tour.Choose("mnuFileSel_0");
  tour.Choose("mnuToolSel_18");
  if (auto* curves = tour.Find<QComboBox>(tour.Shown(), "Combo1")) curves->setCurrentIndex(1);
  tour.Press(tour.Shown(), "cmdApply");
  tour.Choose("mnuFileSel_2");
}

void BuildColorPicture(TourGuide& tour) {
  CloseEveryImage(tour);
  tour.Choose("mnuFileSel_6");
  tour.Picture("color-without-an-image");
  tour.Choose("mnuFileSel_3");
  for (const char* name : {"red.fit", "green.fit", "blue.fit"}) ScaleFrame(tour, name);
  tour.Choose("mnuFileSel_6");
  tour.Picture("color-opened");
  tour.ExpectQuestion("color-asks", QMessageBox::No);
  tour.Press(tour.Shown(), "cmdCombine");
  int slot = 0;
  for (const char* list : {"ComboR", "ComboG", "ComboB"})
    if (auto* images = tour.Find<QComboBox>(tour.Shown(), list)) images->setCurrentIndex(slot++);
  tour.Press(tour.Shown(), "cmdCombine");
  tour.Picture("color-composite");
  tour.Press(tour.Shown(), "cmdCancel");
  SetText(tour, "txbGreen", "0.9");
  SetText(tour, "txbBlue", "2.5");
  tour.ExpectMessage("color-multiplier-too-large");
  tour.Press(tour.Shown(), "cmdCombine");
  SetText(tour, "txbBlue", "1.1");
  tour.Press(tour.Shown(), "cmdCombine");
  tour.Picture("color-composite-with-multipliers");
  tour.ExpectFile(tour.Output("color_composite.bmp"), "color-save");
  tour.Press(tour.Shown(), "cmdSave");
  tour.Picture("color-saved");
  tour.Choose("mnuFileSel_3");
}

}  // namespace

int main(int argc, char** argv) {
  const bool dark = argc > 1 && std::strcmp(argv[1], "--dark") == 0;
  if (argc != (dark ? 4 : 3)) {
    std::cerr << "usage: tour [--dark] SAMPLES OUTPUT\n";
    return EXIT_FAILURE;
  }
  // The user's own settings stay out of it.
  const QTemporaryDir settings;
  qputenv("XDG_CONFIG_HOME", settings.path().toLocal8Bit());
  qputenv("XDG_RUNTIME_DIR", settings.path().toLocal8Bit());
  qInstallMessageHandler(PassOnMessage);
  QApplication app(argc, argv);
  std::setlocale(LC_NUMERIC, "C");
  QApplication::setQuitOnLastWindowClosed(false);
  if (dark) UseDarkColors();

  TourGuide tour(argv[argc - 2], argv[argc - 1]);
  tour.Start();
  if (tour.Failed()) return EXIT_FAILURE;
  for (const auto step :
       {OpenSamples, ShowViews, ShowDialogs, Deconvolve, SaveDeconvolved, SaveAndClose, ScaleLevels,
        MaskLevels, FilterImage, AlignFrames, StackFrames, DivideByFlat, BuildColorPicture})
    step(tour);
  return tour.Failed() ? EXIT_FAILURE : EXIT_SUCCESS;
}
