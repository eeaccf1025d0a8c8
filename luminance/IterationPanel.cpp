#include "luminance/IterationPanel.h"

#include <QGridLayout>

#include "base/progress.h"
#include "base/text.h"
#include "widgets/BarProgress.h"
#include "widgets/controls.h"

namespace corvane {
namespace {

constexpr int kBarWidth = 260;

QString ErrorText(double error, int decimals) {
  return QString::fromStdString(FixedDecimals(error, decimals) + " %");
}

}  // namespace

IterationPanel::IterationPanel(const Captions& captions, int decimals)
    : ProgressBar1(Named(new QProgressBar, "ProgressBar1", "Rows done in this iteration, in percent")),
      lblIteration(Value("lblIteration", captions.iteration)),
      lblError(Value("lblError", captions.error)),
      decimals_(decimals) {
  ProgressBar1->setRange(0, 100);
  ProgressBar1->setTextVisible(false);
  ProgressBar1->setMinimumWidth(kBarWidth);
  // The values have room for what they may become, so that nothing moves while they change.
  lblError->setMinimumWidth(fontMetrics().horizontalAdvance(ErrorText(-99999, decimals)));

  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(0, 0, 0, 0);
  if (*captions.bar) grid->addWidget(Named(PlainLabel(captions.bar), "Label2"), 0, 0, 1, 2);
  grid->addWidget(ProgressBar1, 1, 0, 1, 2);
  grid->addWidget(Named(PlainLabel(captions.iteration), "Label3"), 2, 0);
  grid->addWidget(lblIteration, 2, 1);
  grid->addWidget(Named(PlainLabel(captions.error), "Label4"), 3, 0);
  grid->addWidget(lblError, 3, 1);
  grid->setColumnStretch(0, 1);
  Clear();
}

QLabel* IterationPanel::Value(const char* name, const char* spokenName) {
  auto* label = Named(PlainLabel(), name, QLatin1String(spokenName));
  label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  return label;
}

void IterationPanel::Clear() {
  ProgressBar1->setValue(0);
  lblIteration->clear();
  lblError->clear();
}

void IterationPanel::ShowRow(int done, int total) { ShowPercent(*ProgressBar1, Percent(done, total)); }

void IterationPanel::ShowIteration(int iteration, float relativeError) {
  lblIteration->setText(QString::number(iteration));
  lblError->setText(ErrorText(relativeError, decimals_));
}

}  // namespace corvane
