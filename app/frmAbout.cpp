#include "app/frmAbout.h"

#include <QFontMetrics>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "widgets/controls.h"

namespace corvane {
namespace {

constexpr char kAbout[] =
    "Corvane v. 3.211\n"
    "\n"
    "Views and processes astronomical images: FITS files of 8, 16 and 32 bits per pixel and Windows bitmaps, "
    "up to ten at a time.\n"
    "\n"
    "Press F1 in any window for the part of the manual that describes it.\n"
    "\n"
    "Runs on Qt %1.";

}  // namespace

frmAbout::frmAbout(ModCV&, Platform&) {
  setObjectName("frmAbout");
  setWindowTitle("About Corvane");
  auto* txbAbout = Named(new QPlainTextEdit, "txbAbout", "About Corvane");
  txbAbout->setReadOnly(true);
  txbAbout->setPlainText(QString::fromLatin1(kAbout).arg(QLatin1String(qVersion())));
  const QFontMetrics metrics(txbAbout->font());
  txbAbout->setMinimumSize(metrics.averageCharWidth() * 52, metrics.lineSpacing() * 10);
  auto* cmdOK = Named(new QPushButton("OK"), "cmdOK", "OK");
  cmdOK->setDefault(true);
  connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(txbAbout);
  layout->addWidget(cmdOK, 0, Qt::AlignRight);
  cmdOK->setFocus();
}

}  // namespace corvane
