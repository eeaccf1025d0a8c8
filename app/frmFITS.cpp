#include "app/frmFITS.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "formats/fits_cards.h"
#include "widgets/controls.h"

namespace corvane {
namespace {

constexpr int kCommentLength = 68;

bool HasFullPrecision(int bytesPerPixel) {
  return bytesPerPixel == 2 || bytesPerPixel == 4 || bytesPerPixel == -4;
}

// One "?" for each character that a card can't hold, however many bytes it has.
std::string CardText(const QString& typed) {
  std::string text;
  for (const char32_t character : typed.toUcs4())
    text += character >= 0x20 && character < 0x7f ? static_cast<char>(character) : '?';
  return text;
}

}  // namespace

frmFITS::frmFITS(ModCV& store, Platform&)
    : cv(store),
      Option1(Named(new QRadioButton("&8"), "Option1", "8 bits per pixel")),
      Option2(Named(new QRadioButton("&16"), "Option2", "16 bits per pixel")),
      txbComment(Named(new QLineEdit, "txbComment", "Comment in the header, 68 characters at most")) {
  setObjectName("frmFITS");
  setWindowTitle("Save Options");
  Option1->setChecked(true);
  Option2->setEnabled(HasFullPrecision(cv.BytesPerPixel));
  if (!Option2->isEnabled()) Option2->setToolTip("This picture exists in 8 bits only.");
  connect(Option1, &QRadioButton::clicked, this, [this] { cv.BytesPerPixel = 1; });
  connect(Option2, &QRadioButton::clicked, this, [this] { cv.BytesPerPixel = 2; });
  txbComment->setMaxLength(kCommentLength);
  txbComment->setMinimumWidth(txbComment->fontMetrics().averageCharWidth() * (kCommentLength - 8));

  auto* frame = Named(new QGroupBox("Bits Per Pixel"), "Frame1", "Bits per pixel");
  auto* bits = new QHBoxLayout(frame);
  bits->addWidget(Option1);
  bits->addWidget(Option2);
  bits->addStretch();
  auto* label = Named(new QLabel("Add a Comment to the Header (68 Characters Maximum)"), "Label1");
  label->setBuddy(txbComment);
  auto* cmdClose = Named(new QPushButton("&Finish Save"), "cmdClose", "Finish save");
  cmdClose->setDefault(true);
  connect(cmdClose, &QPushButton::clicked, this, &QDialog::accept);

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(frame);
  layout->addSpacing(6);
  layout->addWidget(label);
  layout->addWidget(txbComment);
  layout->addSpacing(6);
  layout->addWidget(cmdClose, 0, Qt::AlignRight);
  txbComment->setFocus();
}

void frmFITS::done(int result) {
  cv.FitsComment = CommentValue(CardText(txbComment->text()));
  cv.BytesPerPixel = Option1->isChecked() ? 1 : 2;
  QDialog::done(result);
}

}  // namespace corvane
