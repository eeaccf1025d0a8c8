#include "app/frmCVSplash.h"

#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>

#include "widgets/Emblem.h"
#include "widgets/controls.h"

namespace corvane {
namespace {

constexpr int kSplashMilliseconds = 1500;
constexpr QSize kSplashSize(480, 300);

}  // namespace

frmCVSplash::frmCVSplash(Desk& windows)
    : QWidget(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint), desk(windows), Timer1(new QTimer(this)) {
  setObjectName("frmCVSplash");
  setWindowTitle("Corvane");
  auto* Image1 = Named(new QLabel, "Image1", "Corvane, version 3.211, is starting");
  Image1->setPixmap(SplashPicture(kSplashSize, devicePixelRatioF()));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(Image1);
  setFixedSize(kSplashSize);
  move(QGuiApplication::primaryScreen()->availableGeometry().center() - rect().center());
  Timer1->setObjectName("Timer1");
  Timer1->setInterval(kSplashMilliseconds);
  Timer1->setSingleShot(true);
  connect(Timer1, &QTimer::timeout, this, &frmCVSplash::Timer1_Timer);
}

void frmCVSplash::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  Timer1->start();
}

void frmCVSplash::Timer1_Timer() {
  desk.Replace(Window::Examine);
  close();
}

}  // namespace corvane
